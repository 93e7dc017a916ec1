// zuAtomTable::dumpAtomTable: the table as text, for looking at its chains.
#include <cstdio>
#include <memory>

#include "zu/core/zuAtomTable.h"

namespace {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

void writeEscaped(std::FILE* out, const zuAtomStore& atom) {
  for (unsigned int index = 0; index < atom.length; ++index) {
    const unsigned char byte = static_cast<unsigned char>(atom.text[index]);
    switch (byte) {
      case '\t':
        std::fputs("\\t", out);
        break;
      case '\n':
        std::fputs("\\n", out);
        break;
      case '\\':
        std::fputs("\\\\", out);
        break;
      default:
        if (byte < 0x20) {
          std::fprintf(out, "\\x%02X", byte);
        } else {
          std::fputc(byte, out);
        }
    }
  }
}

}  // namespace

int zuAtomTable::dumpAtomTable(const char* file) const {
  if (file == nullptr) return 0;
  std::unique_ptr<std::FILE, FileCloser> out(std::fopen(file, "wb"));
  if (out == nullptr) return 0;
  std::fprintf(out.get(), "zuAtomTable\tbuckets=%u\tatoms=%u\tthreshold=%u\n", bucketCount(),
               count_, threshold_);
  for (uint32_t bucket = 0; bucket <= mask_; ++bucket) {
    for (const zuAtomStore* atom = buckets_[bucket]; atom != nullptr; atom = atom->next) {
      std::fprintf(out.get(), "%u\t%08X\t%u\t", bucket, atom->hash, atom->length);
      writeEscaped(out.get(), *atom);
      std::fputc('\n', out.get());
    }
  }
  return std::fflush(out.get()) == 0 && std::ferror(out.get()) == 0 ? 1 : 0;
}
