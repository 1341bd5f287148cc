// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/search_words.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/input_file.h"

namespace quirn {
namespace {

// A word stands for every other of its row, and not for those of the rows that those are in.
const std::vector<std::vector<std::string_view>>& synonymRows() {
  static const std::vector<std::vector<std::string_view>> rows{
      {"smaller", "compress", "shrink", "reduce", "optimize", "minify", "size", "lighter", "tiny"},
      {"join", "merge", "combine", "concatenate", "stitch", "together"},
      {"split", "separate", "divide", "burst"},
      {"unpack", "extract", "decompress", "unarchive", "open"},
      {"pack", "zip", "archive"},
      {"picture", "pictures", "pic", "photo", "photos", "image", "images", "img"},
      {"jpg", "jpeg"},
      {"tif", "tiff"},
      {"movie", "film", "clip", "video", "videos", "mp4", "mov", "mkv", "avi", "webm"},
      {"song", "music", "sound", "audio", "mp3", "wav", "flac", "m4a", "ogg"},
      {"bmp", "image"},
      {"delete", "remove", "strip", "erase"},
      {"word", "docx", "doc"},
      {"excel", "xlsx", "spreadsheet"},
      {"powerpoint", "pptx", "slides"},
      {"enlarge", "bigger", "upscale", "resize", "scale"},
      {"cut", "trim", "shorten"},
      {"turn", "rotate"},
      {"change", "convert", "transform"},
      {"password", "encrypt", "protect", "lock"},
      {"decrypt", "unlock"},
      {"subtitle", "subtitles", "captions"},
      {"gray", "grey", "grayscale", "greyscale"},
      {"check", "verify", "validate"},
      {"duplicate", "duplicates", "dedupe"},
      {"exif", "metadata"},
      {"anonymise", "anonymize"},
  };
  return rows;
}

bool isPartOfWord(unsigned char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || byte >= 0x80;
}

// U+2000 to U+2FFF: punctuation, arrows and signs, three bytes each in UTF-8.
bool isSign(std::string_view text) {
  return text.size() >= 3 && static_cast<unsigned char>(text.front()) == 0xE2;
}

}  // namespace

std::vector<std::string> searchWords(std::string_view text) {
  std::string lower = lowerCased(text);
  for (std::size_t i = 0; i < lower.size(); ++i) {
    if (isSign(std::string_view(lower).substr(i))) lower.replace(i, 3, "   ");
  }
  std::vector<std::string> words;
  bool isInWord = false;
  for (const char character : lower) {
    const bool isPart = isPartOfWord(static_cast<unsigned char>(character));
    if (isPart && !isInWord) words.emplace_back();
    if (isPart) words.back() += character;
    isInWord = isPart;
  }
  return words;
}

std::string joinedWords(std::span<const std::string> words) {
  return fmt::format("{}", fmt::join(words, " "));
}

bool isFiller(std::string_view word) {
  constexpr std::string_view fillers[] = {"a",    "an",   "and",  "for",  "from", "get",  "how",  "i",
                                          "in",   "into", "it",   "make", "my",   "of",   "on",   "please",
                                          "some", "the",  "this", "to",   "want", "with", "file", "files"};
  return std::ranges::find(fillers, word) != std::end(fillers);
}

std::vector<std::string_view> synonymsOf(std::string_view word) {
  std::vector<std::string_view> synonyms;
  for (const auto& row : synonymRows()) {
    if (std::ranges::find(row, word) == row.end()) continue;
    std::ranges::remove_copy(row, std::back_inserter(synonyms), word);
  }
  return synonyms;
}

}  // namespace quirn
