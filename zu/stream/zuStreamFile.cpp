#include "zu/stream/zuStreamFile.h"

#include <new>
#include <string>

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"

zuStreamFile::zuStreamFile(zuFileMode::tAccess access)
    : top_(nullptr), body_(nullptr), access_(access) {}

zuStreamFile::~zuStreamFile() {
  while (top_ != nullptr) {
    zuStreamFileTransformer* const next = top_->Next();
    top_->Finalize();
    delete top_;
    top_ = next;
  }
}

void zuStreamFile::PushTransformer(zuStreamFileTransformer* transformer) {
  if (transformer == nullptr) ReportError(zuMessageIds::kInvalidArgument);
  transformer->Initialize(top_);
  top_ = transformer;
}

void zuStreamFile::PushBody(zuMemoryStreamBody* body) {
  PushTransformer(body);
  body_ = body;
}

unsigned zuStreamFile::ReadThroughChain(void* buffer, unsigned size) {
  if ((access_ & zuFileMode::eRead) == 0) ReportError(zuMessageIds::kInvalidArgument);
  return top_ != nullptr ? top_->Read(buffer, size) : 0;
}

unsigned zuStreamFile::WriteThroughChain(const void* data, unsigned size) {
  if ((access_ & zuFileMode::eWrite) == 0) ReportError(zuMessageIds::kInvalidArgument);
  return top_ != nullptr ? top_->Write(data, size) : 0;
}

zuFilePosition zuStreamFile::GetPosition() const {
  return top_ != nullptr ? top_->GetPosition() : zuFilePosition();
}

void zuStreamFile::SetPosition(const zuFilePosition& position) {
  if (top_ != nullptr) top_->SetPosition(position);
}

void zuStreamFile::ChangeSize(const zuFilePosition& size) {
  if ((access_ & zuFileMode::eWrite) == 0) ReportError(zuMessageIds::kInvalidArgument);
  if (top_ != nullptr) top_->ChangeSize(size);
}

int zuStreamFile::AtEof() const {
  return top_ != nullptr ? top_->AtEof() : 1;
}

void zuStreamFile::Flush() {
  if (top_ != nullptr) top_->Flush();
}

void zuStreamFile::ReportError(unsigned short id) {
  ZuExThrow(id);
}

zuString zuStreamFile::ReadAll() const {
  if (top_ == nullptr) return zuString::EmptyString();
  if (top_ == body_) return zuString::FromBytes(body_->Data(), body_->Length());
  const zuFilePosition saved = top_->GetPosition();
  top_->SetPosition(zuFilePosition());
  std::string text;
  try {
    char chunk[1024];
    while (unsigned got = top_->Read(chunk, sizeof chunk)) {
      if (text.size() + got > zuString::kMaxLength) throw zuExMemory();
      text.append(chunk, got);
    }
  } catch (const std::bad_alloc&) {
    top_->SetPosition(saved);
    throw zuExMemory();
  } catch (...) {
    top_->SetPosition(saved);
    throw;
  }
  top_->SetPosition(saved);
  return zuString::FromBytes(text.data(), static_cast<unsigned>(text.size()));
}
