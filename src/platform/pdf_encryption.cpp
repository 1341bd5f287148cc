// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_encryption.h"

#include <openssl/evp.h>

#include <algorithm>
#include <span>
#include <stdexcept>
#include <utility>

#include "platform/pdf_library.h"
#include "platform/random.h"

namespace quirn::platform {
namespace {

constexpr std::int64_t blockSize = 16;

unsigned char* bytesOf(std::string& text) {
  return reinterpret_cast<unsigned char*>(text.data());
}

const unsigned char* bytesOf(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

void require(int result) {
  if (result != 1) throw std::runtime_error("the cipher failed");
}

}  // namespace

// The library makes the key and all that is derived from it while it writes a document; one without pages will do.
PDFEncryption newPDFEncryption(const std::string& password) {
  QPDF empty;
  empty.emptyPDF();
  QPDFWriter writer(empty);
  writer.setOutputMemory();
  writer.setR6EncryptionParameters(password.c_str(), password.c_str(), true, true, true, true, true, true,
                                   qpdf_r3p_full, true);
  writer.write();
  const auto file = writer.getBufferSharedPointer();
  QPDF locked;
  locked.processMemoryFile("key", reinterpret_cast<const char*>(file->getBuffer()), file->getSize(), password.c_str());
  return {.key = locked.getEncryptionKey(), .dictionary = locked.getTrailer().getKey("/Encrypt").unparseResolved()};
}

void PDFStreamCipher::Freeing::operator()(void* state) const {
  EVP_CIPHER_CTX_free(static_cast<EVP_CIPHER_CTX*>(state));
}

PDFStreamCipher::PDFStreamCipher(const PDFEncryption& encryption)
    : state_(EVP_CIPHER_CTX_new()), vector_(static_cast<std::size_t>(blockSize), '\0') {
  fillRandom(std::as_writable_bytes(std::span(vector_)));
  require(EVP_EncryptInit_ex(static_cast<EVP_CIPHER_CTX*>(state_.get()), EVP_aes_256_cbc(), nullptr,
                             bytesOf(std::string_view(encryption.key)), bytesOf(std::string_view(vector_))));
}

PDFStreamCipher::~PDFStreamCipher() = default;

std::int64_t PDFStreamCipher::sizeOf(std::int64_t length) {
  return blockSize + (length / blockSize + 1) * blockSize;
}

std::string_view PDFStreamCipher::next(std::string_view bytes) {
  output_ = std::exchange(vector_, {});
  const std::size_t begin = output_.size();
  output_.resize(begin + bytes.size() + static_cast<std::size_t>(blockSize));
  int count = 0;
  require(EVP_EncryptUpdate(static_cast<EVP_CIPHER_CTX*>(state_.get()), bytesOf(output_) + begin, &count,
                            bytesOf(bytes), static_cast<int>(bytes.size())));
  output_.resize(begin + static_cast<std::size_t>(count));
  return output_;
}

std::string_view PDFStreamCipher::last() {
  output_ = std::exchange(vector_, {});
  const std::size_t begin = output_.size();
  output_.resize(begin + static_cast<std::size_t>(blockSize));
  int count = 0;
  require(EVP_EncryptFinal_ex(static_cast<EVP_CIPHER_CTX*>(state_.get()), bytesOf(output_) + begin, &count));
  output_.resize(begin + static_cast<std::size_t>(count));
  return output_;
}

std::string encryptedString(const PDFEncryption& encryption, std::string_view bytes) {
  PDFStreamCipher cipher(encryption);
  std::string encrypted(cipher.next(bytes));
  encrypted += cipher.last();
  return QPDFObjectHandle::newString(encrypted).unparseBinary();
}

}  // namespace quirn::platform
