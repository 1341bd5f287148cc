// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/hash_tools.h"

#include <array>
#include <span>
#include <utility>

#include "platform/digest.h"

namespace quirn {
namespace {

using platform::DigestAlgorithm;
using Choice = std::pair<std::string_view, DigestAlgorithm>;

// The first of each is the default.
constexpr std::array<Choice, 5> hashChoices{{{"SHA-256", DigestAlgorithm::sha256},
                                             {"SHA-1", DigestAlgorithm::sha1},
                                             {"SHA-384", DigestAlgorithm::sha384},
                                             {"SHA-512", DigestAlgorithm::sha512},
                                             {"MD5", DigestAlgorithm::md5}}};
constexpr std::array<Choice, 3> hmacChoices{
    {{"SHA-256", DigestAlgorithm::sha256}, {"SHA-512", DigestAlgorithm::sha512}, {"SHA-1", DigestAlgorithm::sha1}}};

ChoiceControl algorithmControl(std::span<const Choice> choices) {
  ChoiceControl control{"algo", "Algorithm", {}, std::string(choices.front().first)};
  for (const auto& [name, algorithm] : choices) control.options.emplace_back(name);
  return control;
}

DigestAlgorithm algorithmIn(const TextToolOptions& options, std::span<const Choice> choices) {
  const std::string wanted = options.text("algo", choices.front().first);
  for (const auto& [name, algorithm] : choices) {
    if (name == wanted) return algorithm;
  }
  return choices.front().second;
}

std::string transformHash(std::string_view input, const TextToolOptions& options) {
  platform::Digest digest(algorithmIn(options, hashChoices));
  digest.update(std::as_bytes(std::span(input)));
  return digest.finishHex();
}

std::string transformHMAC(std::string_view input, const TextToolOptions& options) {
  const std::string key = options.text("key", "sesame");
  if (key.empty()) throw TextToolError("Enter a secret key to compute the HMAC.");
  return platform::hmacHex(algorithmIn(options, hmacChoices), key, input);
}

}  // namespace

const TextTool& hashTool() {
  static const TextTool tool{
      .id = "dev.hash",
      .name = "Hash Text",
      .shortName = "hash",
      .icon = "lock.shield",
      .aliases = {"hash", "sha256", "sha", "md5", "checksum", "digest", "sha1", "sha512"},
      .blurb = "Compute a cryptographic hash (SHA-256/1/384/512 or MD5) of the input.",
      .takesBytes = true,
      .controls = {algorithmControl(hashChoices)},
      .sampleInput = "hello",
      .transform = &transformHash,
  };
  return tool;
}

const TextTool& hmacTool() {
  static const TextTool tool{
      .id = "dev.hmac",
      .name = "HMAC",
      .shortName = "hmac",
      .icon = "key.horizontal",
      .aliases = {"hmac", "mac", "signature", "hmac-sha256", "keyed hash"},
      .blurb = "Compute an HMAC (SHA-256/512/1) of the input using a secret key.",
      .takesBytes = true,
      .controls = {algorithmControl(hmacChoices), FieldControl{"key", "Key", "sesame", "sesame"}},
      .sampleInput = "message",
      .transform = &transformHMAC,
  };
  return tool;
}

}  // namespace quirn
