#include "zu/stream/zuStreamFileTransformer.h"

zuStreamFileTransformer::~zuStreamFileTransformer() = default;

int zuStreamFileTransformer::AtEof() const {
  return next_ != nullptr ? next_->AtEof() : 1;
}

void zuStreamFileTransformer::ChangeSize(const zuFilePosition& size) {
  if (next_ != nullptr) next_->ChangeSize(size);
}

void zuStreamFileTransformer::Flush() {
  if (next_ != nullptr) next_->Flush();
}

zuFilePosition zuStreamFileTransformer::GetPosition() const {
  return next_ != nullptr ? next_->GetPosition() : zuFilePosition();
}

void zuStreamFileTransformer::SetPosition(const zuFilePosition& position) {
  if (next_ != nullptr) next_->SetPosition(position);
}

unsigned zuStreamFileTransformer::Read(void* buffer, unsigned size) {
  return next_ != nullptr ? next_->Read(buffer, size) : 0;
}

unsigned zuStreamFileTransformer::Write(const void* data, unsigned size) {
  return next_ != nullptr ? next_->Write(data, size) : 0;
}

void zuStreamFileTransformer::Initialize(zuStreamFileTransformer* next) {
  next_ = next;
}

void zuStreamFileTransformer::Finalize() {
  next_ = nullptr;
}

zuStreamFileTransformer* zuStreamFileTransformer::Clone() const {
  return new zuStreamFileTransformer(*this);
}

int zuStreamFileTransformer::StreamType() const {
  return 0;
}
