// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Finding an operation by what a person types, for the palette and the command line.
// docs/search.md tells how the findings are ranked.

#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/registry.h"

namespace quirn {

// An index, made once; it may be asked from any thread.
class OperationSearch {
 public:
  // The registry is complete and outlives the index.
  explicit OperationSearch(const OperationRegistry& registry);

  // The operations that `text` may mean, best first; all of them for a text without a word.
  // `inputs` are the files at hand, if any: among operations that match equally well, those that can
  // run on them come first.
  std::vector<const OperationType*> find(std::string_view text, std::span<const InputFile> inputs = {}) const;

 private:
  enum class Source { name, identifier, alias };
  struct Phrase {
    std::string text;  // words, joined
    Source source = Source::name;
  };
  struct Entry {
    const OperationType* type = nullptr;
    std::vector<Phrase> phrases;
    std::vector<std::string> words;      // of all phrases, sorted
    std::vector<std::string> nameWords;  // sorted
  };
  // What is looked for: the words as typed or as corrected, and each one's synonyms.
  struct Query {
    std::string phrase;
    std::vector<std::string> words;  // those that carry meaning
    std::vector<std::vector<std::string_view>> synonyms;
  };
  struct Match {
    int tier = 0;     // how it matches, the lowest being the best
    int quality = 0;  // the higher the better, within a tier
    bool operator==(const Match&) const = default;
  };
  struct Finding;

  static Entry entryFor(const OperationType& type);
  static Query queryFor(std::vector<std::string> words);
  static bool matchPhrases(const Entry& entry, const Query& query, Match& match);
  static bool matchWords(const Entry& entry, const Query& query, Match& match);
  static bool match(const Entry& entry, const Query& query, Match& match);
  bool isBeginningOfWord(std::string_view word) const;
  std::vector<std::string> corrected(std::vector<std::string> words) const;
  std::vector<Finding> findings(const Query& query, std::span<const InputFile> inputs) const;

  std::vector<Entry> entries_;
  std::vector<std::string> vocabulary_;  // sorted
};

}  // namespace quirn
