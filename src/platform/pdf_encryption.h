// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The standard security handler of revision 6 (ISO 32000-2, 7.6.4): AES-256 in CBC mode, one key for the whole file.

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace quirn::platform {

struct PDFEncryption {
  std::string key;         // 32 bytes
  std::string dictionary;  // the text of the /Encrypt dictionary
};

// A new key, which `password` unlocks for the user and the owner alike.
PDFEncryption newPDFEncryption(const std::string& password);

// The bytes of one string or stream encrypted: a random initialisation vector, then the blocks, padded.
class PDFStreamCipher {
 public:
  explicit PDFStreamCipher(const PDFEncryption& encryption);
  ~PDFStreamCipher();
  PDFStreamCipher(const PDFStreamCipher&) = delete;
  PDFStreamCipher& operator=(const PDFStreamCipher&) = delete;

  // The size of what becomes of `length` bytes.
  static std::int64_t sizeOf(std::int64_t length);

  // What can be written once these bytes have come. Holds until the next call.
  std::string_view next(std::string_view bytes);
  // The rest.
  std::string_view last();

 private:
  struct Freeing {
    void operator()(void* state) const;
  };
  std::unique_ptr<void, Freeing> state_;
  std::string output_;
  std::string vector_;  // until it is written
};

// A string encrypted, as a hexadecimal one.
std::string encryptedString(const PDFEncryption& encryption, std::string_view bytes);

}  // namespace quirn::platform
