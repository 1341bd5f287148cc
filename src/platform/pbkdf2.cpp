// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pbkdf2.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "platform/bytes.h"
#include "platform/digest.h"

// Vectors never cross the border of a function here: all that takes one is inlined.
#pragma GCC diagnostic ignored "-Wpsabi"

namespace quirn::platform {
namespace {

constexpr std::size_t wordsOfDigest = 5;
constexpr std::size_t wordsOfBlock = 16;
constexpr std::size_t digestsOfKey = 4;

template <class Word>
using State = std::array<Word, wordsOfDigest>;
template <class Word>
using Block = std::array<Word, wordsOfBlock>;

constexpr State<std::uint32_t> firstState{0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};

template <std::size_t count>
struct Lanes {
  typedef std::uint32_t Word __attribute__((vector_size(count * sizeof(std::uint32_t))));
};

template <class Word>
[[gnu::always_inline]] inline Word rotated(const Word& word, int bits) {
  return (word << bits) | (word >> (32 - bits));
}

// Twenty rounds of FIPS 180-4, 6.1.2.
template <class Word, class Function>
[[gnu::always_inline]] inline void rounds(State<Word>& s, Block<Word>& w, std::size_t first, std::uint32_t constant,
                                          const Function& function) {
#pragma GCC unroll 20
  for (std::size_t t = first; t < first + 20; ++t) {
    Word& word = w[t % wordsOfBlock];
    if (t >= wordsOfBlock)
      word =
          rotated<Word>(w[(t + 13) % wordsOfBlock] ^ w[(t + 8) % wordsOfBlock] ^ w[(t + 2) % wordsOfBlock] ^ word, 1);
    const Word next = rotated<Word>(s[0], 5) + function(s[1], s[2], s[3]) + s[4] + constant + word;
    s = {next, s[0], rotated<Word>(s[1], 30), s[2], s[3]};
  }
}

// The block is used up.
template <class Word>
[[gnu::always_inline]] inline void compress(State<Word>& state, Block<Word>& block) {
  const auto parity = [](const Word& b, const Word& c, const Word& d) { return b ^ c ^ d; };
  State<Word> s = state;
  rounds(s, block, 0, 0x5A827999, [](const Word& b, const Word& c, const Word& d) { return d ^ (b & (c ^ d)); });
  rounds(s, block, 20, 0x6ED9EBA1, parity);
  rounds(s, block, 40, 0x8F1BBCDC, [](const Word& b, const Word& c, const Word& d) { return (b & c) | (d & (b | c)); });
  rounds(s, block, 60, 0xCA62C1D6, parity);
  for (std::size_t i = 0; i < wordsOfDigest; ++i) state[i] += s[i];
}

// The states in which HMAC (RFC 2104) begins its two digests.
struct HmacKey {
  State<std::uint32_t> inner = firstState;
  State<std::uint32_t> outer = firstState;
};

std::uint32_t wordAt(std::span<const std::byte> bytes, std::size_t at) {
  std::uint32_t word = 0;
  for (const std::byte byte : bytes.subspan(at, sizeof word)) word = word << 8 | std::to_integer<std::uint32_t>(byte);
  return word;
}

HmacKey hmacKeyOf(std::string_view password) {
  std::array<std::byte, 64> padded{};
  const Bytes digest = password.size() > padded.size() ? digestOf(DigestAlgorithm::sha1, bytesOf(password)) : Bytes();
  std::ranges::copy(digest.empty() ? bytesOf(password) : std::span<const std::byte>(digest), padded.begin());
  Block<std::uint32_t> inner{};
  Block<std::uint32_t> outer{};
  for (std::size_t i = 0; i < wordsOfBlock; ++i) {
    inner[i] = wordAt(padded, i * 4) ^ 0x36363636;
    outer[i] = wordAt(padded, i * 4) ^ 0x5C5C5C5C;
  }
  HmacKey key;
  compress(key.inner, inner);
  compress(key.outer, outer);
  return key;
}

// One of the digests that a key is made of: what is hashed first, and the sum so far.
struct Job {
  State<std::uint32_t> text{};
  State<std::uint32_t> sum{};
};

// A digest's worth of words as the second and last block of a message.
template <class Word>
[[gnu::always_inline]] inline void compressLast(State<Word>& state, const State<Word>& text) {
  Block<Word> block{};
  std::copy(text.begin(), text.end(), block.begin());
  block[wordsOfDigest] += 0x80000000;
  block.back() += (64 + 20) * 8;
  compress(state, block);
}

template <class Word>
[[gnu::always_inline]] inline State<Word> spread(const State<std::uint32_t>& state) {
  State<Word> words{};
  for (std::size_t i = 0; i < wordsOfDigest; ++i) words[i] += state[i];
  return words;
}

template <std::size_t count>
[[gnu::always_inline]] inline void runLanes(const HmacKey& key, std::span<Job> jobs, int iterations) {
  using Word = typename Lanes<count>::Word;
  State<Word> text{};
  State<Word> sum{};
  for (std::size_t lane = 0; lane < count; ++lane) {
    const Job& job = jobs[std::min(lane, jobs.size() - 1)];
    for (std::size_t i = 0; i < wordsOfDigest; ++i) text[i][lane] = job.text[i];
  }
  for (int turn = 0; turn < iterations; ++turn) {
    State<Word> inner = spread<Word>(key.inner);
    compressLast(inner, text);
    text = spread<Word>(key.outer);
    compressLast(text, inner);
    for (std::size_t i = 0; i < wordsOfDigest; ++i) sum[i] ^= text[i];
  }
  for (std::size_t lane = 0; lane < jobs.size(); ++lane)
    for (std::size_t i = 0; i < wordsOfDigest; ++i) jobs[lane].sum[i] = sum[i][lane];
}

using Run = void (*)(const HmacKey&, std::span<Job>, int);

struct Width {
  std::size_t lanes = 0;
  Run run = nullptr;
};

// What every processor of this kind has (SSE2, NEON).
void runNarrow(const HmacKey& key, std::span<Job> jobs, int iterations) {
  runLanes<4>(key, jobs, iterations);
}

#if defined(__x86_64__)

[[gnu::target("avx2")]] void runAvx2(const HmacKey& key, std::span<Job> jobs, int iterations) {
  runLanes<8>(key, jobs, iterations);
}

[[gnu::target("avx512f")]] void runAvx512(const HmacKey& key, std::span<Job> jobs, int iterations) {
  runLanes<16>(key, jobs, iterations);
}

Width widthFor(std::size_t jobs) {
  if (jobs > 8 && __builtin_cpu_supports("avx512f")) return {16, &runAvx512};
  if (jobs > 4 && __builtin_cpu_supports("avx2")) return {8, &runAvx2};
  return {4, &runNarrow};
}

#else

Width widthFor(std::size_t) {
  return {4, &runNarrow};
}

#endif

std::vector<Job> jobsOf(std::span<const Pbkdf2Salt> salts) {
  std::vector<Job> jobs;
  for (const Pbkdf2Salt& salt : salts) {
    for (std::uint32_t number = 1; number <= digestsOfKey; ++number)
      jobs.push_back({{wordAt(salt, 0), wordAt(salt, 4), wordAt(salt, 8), wordAt(salt, 12), number}, {}});
  }
  return jobs;
}

Pbkdf2Key keyOf(std::span<const Job> jobs) {
  Pbkdf2Key key{};
  auto place = key.begin();
  for (const Job& job : jobs) {
    for (const std::uint32_t word : job.sum)
      for (const int shift : {24, 16, 8, 0}) *place++ = static_cast<std::byte>(word >> shift & 0xFF);
  }
  return key;
}

}  // namespace

std::vector<Pbkdf2Key> pbkdf2Sha1(std::string_view password, std::span<const Pbkdf2Salt> salts, int iterations) {
  const HmacKey key = hmacKeyOf(password);
  std::vector<Job> jobs = jobsOf(salts);
  for (std::span<Job> left(jobs); !left.empty();) {
    const auto [lanes, run] = widthFor(left.size());
    const std::size_t count = std::min(lanes, left.size());
    run(key, left.first(count), iterations);
    left = left.subspan(count);
  }
  std::vector<Pbkdf2Key> keys;
  for (std::size_t i = 0; i < salts.size(); ++i)
    keys.push_back(keyOf(std::span(jobs).subspan(i * digestsOfKey, digestsOfKey)));
  return keys;
}

}  // namespace quirn::platform
