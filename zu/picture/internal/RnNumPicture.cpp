#include "zu/picture/internal/RnNumPicture.h"

#include <cstring>

namespace zu::internal {

namespace {

constexpr char kSymbols[] = "(%$,.)89BCDERSVZbcdrsvzt";

// The letter that completes a pair started by `first`, 0 when `first`
// starts none. Reversed pictures start a pair with its second letter.
char pairPartner(char first, bool reversed) {
  static constexpr char kForward[] = "CRcrDBdb";
  for (int i = 0; i < 8; i += 2) {
    const char start = reversed ? kForward[i + 1] : kForward[i];
    if (first == start) return reversed ? kForward[i] : kForward[i + 1];
  }
  return 0;
}

bool isPairLetter(char c) {
  return c == 'C' || c == 'R' || c == 'c' || c == 'r' || c == 'D' || c == 'B' || c == 'd' ||
         c == 'b';
}

// Which ASCII characters are symbols, so that reading a picture costs one
// table look-up per character.
struct SymbolTable {
  bool isSymbol[128] = {};
  constexpr SymbolTable() {
    for (const char* c = kSymbols; *c != '\0'; ++c) isSymbol[static_cast<int>(*c)] = true;
  }
};
constexpr SymbolTable kSymbolTable;

}  // namespace

char numericSymbol(uint32_t codePoint) {
  if (codePoint >= 0xFF01 && codePoint <= 0xFF5E) codePoint = (codePoint + 32) & 0xFF;
  if (codePoint >= 0x80 || !kSymbolTable.isSymbol[codePoint]) return 0;
  return static_cast<char>(codePoint);
}

uint32_t decodeUtf8(const char* text, size_t length, size_t pos, size_t& bytes) {
  const unsigned char lead = static_cast<unsigned char>(text[pos]);
  bytes = 1;
  if (lead < 0x80) return lead;
  size_t extra = 0;
  uint32_t codePoint = 0;
  if (lead >= 0xC2 && lead <= 0xDF) {
    extra = 1;
    codePoint = lead & 0x1F;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    extra = 2;
    codePoint = lead & 0x0F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    extra = 3;
    codePoint = lead & 0x07;
  } else {
    return lead;
  }
  if (pos + extra >= length) return lead;
  for (size_t k = 1; k <= extra; ++k) {
    const unsigned char next = static_cast<unsigned char>(text[pos + k]);
    if ((next & 0xC0) != 0x80) return lead;
    codePoint = (codePoint << 6) | (next & 0x3F);
  }
  bytes = extra + 1;
  return codePoint;
}

size_t encodeUtf8(uint32_t codePoint, char* out) {
  if (codePoint < 0x80) {
    out[0] = static_cast<char>(codePoint);
    return 1;
  }
  if (codePoint < 0x800) {
    out[0] = static_cast<char>(0xC0 | (codePoint >> 6));
    out[1] = static_cast<char>(0x80 | (codePoint & 0x3F));
    return 2;
  }
  if (codePoint < 0x10000) {
    out[0] = static_cast<char>(0xE0 | (codePoint >> 12));
    out[1] = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
    out[2] = static_cast<char>(0x80 | (codePoint & 0x3F));
    return 3;
  }
  out[0] = static_cast<char>(0xF0 | (codePoint >> 18));
  out[1] = static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
  out[2] = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
  out[3] = static_cast<char>(0x80 | (codePoint & 0x3F));
  return 4;
}

void reverseUtf8(const char* text, size_t length, std::string& out) {
  out.resize(length);
  size_t end = length;
  for (size_t pos = 0; pos < length;) {
    size_t bytes = 0;
    decodeUtf8(text, length, pos, bytes);
    end -= bytes;
    std::memcpy(&out[end], text + pos, bytes);
    pos += bytes;
  }
}

size_t countCodePoints(const char* text, size_t length) {
  size_t count = 0;
  for (size_t pos = 0; pos < length; ++count) {
    size_t bytes = 0;
    decodeUtf8(text, length, pos, bytes);
    pos += bytes;
  }
  return count;
}

void TextSink::putLong(const char* text, size_t length) {
  if (heap_.empty()) {
    if (size_ + length <= sizeof inline_) {
      std::memcpy(inline_ + size_, text, length);
      size_ += length;
      return;
    }
    heap_.reserve(2 * (size_ + length));
    heap_.assign(inline_, size_);
  }
  heap_.append(text, length);
  size_ += length;
}

char NumPictureReader::symbolAt(size_t pos, size_t& bytes) const {
  const unsigned char lead = static_cast<unsigned char>(picture_[pos]);
  if (lead < 0x80) {
    bytes = 1;
    return lead == '\'' ? 0 : numericSymbol(lead);
  }
  return numericSymbol(decodeUtf8(picture_, length_, pos, bytes));
}

bool NumPictureReader::fault() {
  faulty_ = true;
  pos_ = length_;
  return false;
}

bool NumPictureReader::next(NumPictureItem& item) {
  if (pos_ >= length_) return false;
  const size_t start = pos_;
  if (picture_[pos_] == '\'') {
    size_t end = pos_ + 1;
    for (;;) {
      const void* quote = std::memchr(picture_ + end, '\'', length_ - end);
      if (quote == nullptr) return fault();
      end = static_cast<size_t>(static_cast<const char*>(quote) - picture_);
      if (end + 1 < length_ && picture_[end + 1] == '\'') {
        end += 2;
        continue;
      }
      break;
    }
    item.kind = NumPictureItem::kQuoted;
    item.text = picture_ + start + 1;
    item.length = end - start - 1;
    pos_ = end + 1;
    return true;
  }

  size_t bytes = 0;
  const char symbol = symbolAt(pos_, bytes);
  if (symbol == 0) {
    // A literal runs up to the next symbol or quote.
    pos_ += bytes;
    while (pos_ < length_ && picture_[pos_] != '\'' && symbolAt(pos_, bytes) == 0) pos_ += bytes;
    item.kind = NumPictureItem::kLiteral;
    item.text = picture_ + start;
    item.length = pos_ - start;
    return true;
  }

  item.kind = NumPictureItem::kSymbol;
  item.count = 0;
  if (isPairLetter(symbol)) {
    const char partner = pairPartner(symbol, reversed_);
    if (partner == 0) return fault();
    item.symbol = reversed_ ? partner : symbol;
    while (pos_ < length_) {
      size_t firstBytes = 0, secondBytes = 0;
      if (symbolAt(pos_, firstBytes) != symbol) break;
      if (pos_ + firstBytes >= length_ || symbolAt(pos_ + firstBytes, secondBytes) != partner) {
        return fault();
      }
      pos_ += firstBytes + secondBytes;
      ++item.count;
    }
    return true;
  }
  item.symbol = symbol;
  while (pos_ < length_ && symbolAt(pos_, bytes) == symbol) {
    pos_ += bytes;
    ++item.count;
  }
  return true;
}

}  // namespace zu::internal
