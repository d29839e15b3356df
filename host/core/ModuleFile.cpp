#include "host/core/ModuleFile.h"

#include <QFile>
#include <cstdint>
#include <cstring>

namespace host {

namespace {

constexpr uint32_t kPtLoad = 1;

// Reads an unsigned little- or big-endian field of `size` bytes at `offset`.
bool ReadField(const QByteArray& data, qint64 offset, int size, bool bigEndian, uint64_t* out) {
  if (offset < 0 || offset + size > data.size()) return false;
  uint64_t v = 0;
  for (int i = 0; i < size; ++i) {
    const auto byte = uint8_t(data[offset + (bigEndian ? i : size - 1 - i)]);
    v = (v << 8) | byte;
  }
  *out = v;
  return true;
}

// Whether [offset, offset + length) lies inside a file of `fileSize` bytes.
bool Inside(uint64_t offset, uint64_t length, uint64_t fileSize) {
  return offset <= fileSize && length <= fileSize - offset;
}

bool CheckElf(const QByteArray& data, QString* why) {
  const bool is64 = data[4] == 2;
  if (data[4] != 1 && !is64) {
    *why = QStringLiteral("unknown ELF class");
    return false;
  }
  const bool big = data[5] == 2;
  const uint64_t size = uint64_t(data.size());
  uint64_t phoff = 0, phentsize = 0, phnum = 0, shoff = 0, shentsize = 0, shnum = 0;
  const bool ok =
      is64 ? ReadField(data, 0x20, 8, big, &phoff) && ReadField(data, 0x28, 8, big, &shoff) &&
                 ReadField(data, 0x36, 2, big, &phentsize) &&
                 ReadField(data, 0x38, 2, big, &phnum) &&
                 ReadField(data, 0x3A, 2, big, &shentsize) && ReadField(data, 0x3C, 2, big, &shnum)
           : ReadField(data, 0x1C, 4, big, &phoff) && ReadField(data, 0x20, 4, big, &shoff) &&
                 ReadField(data, 0x2A, 2, big, &phentsize) &&
                 ReadField(data, 0x2C, 2, big, &phnum) &&
                 ReadField(data, 0x2E, 2, big, &shentsize) && ReadField(data, 0x30, 2, big, &shnum);
  if (!ok || phnum == 0 || phentsize < (is64 ? 56u : 32u) ||
      !Inside(phoff, phnum * phentsize, size)) {
    *why = QStringLiteral("its program headers are missing or cut off");
    return false;
  }
  if (shnum != 0 && !Inside(shoff, shnum * shentsize, size)) {
    *why = QStringLiteral("its section headers are cut off");
    return false;
  }
  for (uint64_t i = 0; i < phnum; ++i) {
    const qint64 entry = qint64(phoff + i * phentsize);
    uint64_t type = 0, offset = 0, filesz = 0;
    const bool read = ReadField(data, entry, 4, big, &type) &&
                      (is64 ? ReadField(data, entry + 0x08, 8, big, &offset) &&
                                  ReadField(data, entry + 0x20, 8, big, &filesz)
                            : ReadField(data, entry + 0x04, 4, big, &offset) &&
                                  ReadField(data, entry + 0x10, 4, big, &filesz));
    if (!read) {
      *why = QStringLiteral("its program headers are cut off");
      return false;
    }
    if (type == kPtLoad && !Inside(offset, filesz, size)) {
      *why = QStringLiteral("it is cut off (a loadable segment ends past the end of the file)");
      return false;
    }
  }
  return true;
}

}  // namespace

bool CheckModuleFile(const QString& fileName, QString* error) {
  QFile file(fileName);
  QString why;
  if (!file.open(QIODevice::ReadOnly)) {
    why = file.errorString();
  } else {
    // Modules are a few megabytes; anything far larger is not one of ours.
    constexpr qint64 kMaxModule = qint64(1) << 30;
    if (file.size() > kMaxModule) {
      why = QStringLiteral("it is larger than any module");
    } else {
      const QByteArray data = file.readAll();
      if (data.size() >= 4 && std::memcmp(data.constData(),
                                          "\x7f"
                                          "ELF",
                                          4) == 0) {
        if (data.size() < 0x40)
          why = QStringLiteral("it is cut off");
        else
          CheckElf(data, &why);
      } else if (data.size() >= 2 && data.startsWith("MZ")) {
        // A Windows module: the system loader reports damaged files itself.
      } else {
        why = QStringLiteral("it is not a shared library");
      }
    }
  }
  if (why.isEmpty()) return true;
  if (error)
    *error = QStringLiteral("The module \"") + fileName + QStringLiteral("\" cannot be loaded: ") +
             why + u'.';
  return false;
}

}  // namespace host
