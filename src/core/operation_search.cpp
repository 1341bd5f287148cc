// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/operation_search.h"

#include <algorithm>
#include <functional>
#include <tuple>

#include "core/nearest_name.h"
#include "core/search_words.h"

namespace quirn {
namespace {

// From the best to the weakest.
enum Tier { strongPhrase, phraseBeginning, allWords, someWords };

// Nobody types more; somebody may paste a novel.
constexpr std::size_t mostWords = 12;
constexpr std::size_t longestText = 200;

void sortUnique(std::vector<std::string>& words) {
  std::ranges::sort(words);
  words.erase(std::ranges::unique(words).begin(), words.end());
}

bool beginsAny(const std::vector<std::string>& sorted, std::string_view beginning) {
  const auto found = std::ranges::lower_bound(sorted, beginning, std::less<>());
  return found != sorted.end() && found->starts_with(beginning);
}

bool hasWord(const std::vector<std::string>& sorted, std::string_view word) {
  return std::ranges::binary_search(sorted, word, std::less<>());
}

// A phrase has the word as a whole one.
bool phraseHas(std::string_view phrase, std::string_view word) {
  for (std::size_t at = phrase.find(word); at != std::string_view::npos; at = phrase.find(word, at + 1)) {
    const std::size_t end = at + word.size();
    if ((at == 0 || phrase[at - 1] == ' ') && (end == phrase.size() || phrase[end] == ' ')) return true;
  }
  return false;
}

}  // namespace

struct OperationSearch::Finding {
  const OperationType* type = nullptr;
  Match match;
  bool isRunnable = false;
  std::size_t place = 0;

  // Between files and a tool for typed text, a toolbox for files has the files first.
  auto rank() const {
    return std::tuple(match.tier, !isRunnable, !type->isBuilt(), -match.quality, type->isInteractive(), place);
  }
};

OperationSearch::OperationSearch(const OperationRegistry& registry) {
  for (const OperationType& type : registry.operations()) {
    entries_.push_back(entryFor(type));
    std::ranges::copy(entries_.back().words, std::back_inserter(vocabulary_));
  }
  sortUnique(vocabulary_);
}

OperationSearch::Entry OperationSearch::entryFor(const OperationType& type) {
  Entry entry{.type = &type, .phrases = {}, .words = {}, .nameWords = {}};
  const auto add = [&entry](std::string_view text, Source source) {
    const std::vector<std::string> words = searchWords(text);
    std::ranges::copy(words, std::back_inserter(entry.words));
    entry.phrases.push_back({joinedWords(words), source});
  };
  add(type.info().displayName, Source::name);
  add(type.info().operationID, Source::identifier);
  for (const std::string_view alias : type.info().aliases) add(alias, Source::alias);
  sortUnique(entry.words);
  entry.nameWords = searchWords(type.info().displayName);
  sortUnique(entry.nameWords);
  return entry;
}

OperationSearch::Query OperationSearch::queryFor(std::vector<std::string> words) {
  Query query{.phrase = joinedWords(words), .words = {}, .synonyms = {}};
  std::ranges::remove_copy_if(words, std::back_inserter(query.words), &isFiller);
  if (query.words.empty()) query.words = std::move(words);
  for (const std::string& word : query.words) query.synonyms.push_back(synonymsOf(word));
  return query;
}

// The typed words as a whole against each phrase. A name that begins with them, as whole words, says as much as an
// alias that is just them.
bool OperationSearch::matchPhrases(const Entry& entry, const Query& query, Match& match) {
  match = {phraseBeginning, 0};
  for (const Phrase& phrase : entry.phrases) {
    if (!phrase.text.starts_with(query.phrase)) continue;
    const std::string_view rest = std::string_view(phrase.text).substr(query.phrase.size());
    const bool isName = phrase.source == Source::name;
    const bool isStrong = rest.empty() || (isName && rest.starts_with(' '));
    if (isStrong) match.tier = strongPhrase;
    match.quality = std::max(match.quality, isName && rest.empty() ? 4 : isStrong ? 3 : isName ? 2 : 1);
  }
  return match.quality > 0;
}

// The typed words one by one: as they are, as beginnings, or by what they mean.
bool OperationSearch::matchWords(const Entry& entry, const Query& query, Match& match) {
  std::size_t matched = 0;
  int quality = 0;
  std::vector<int> wordsInPhrase(entry.phrases.size());
  for (std::size_t i = 0; i < query.words.size(); ++i) {
    const std::string& word = query.words[i];
    const auto& synonyms = query.synonyms[i];
    const auto means = [&](const auto& has) { return std::ranges::any_of(synonyms, has); };
    const bool isWhole = hasWord(entry.words, word);
    const bool isMeant = isWhole || means([&](std::string_view other) { return hasWord(entry.words, other); });
    if (!isMeant && !beginsAny(entry.words, word)) continue;
    ++matched;
    quality += isWhole ? 3 : isMeant ? 1 : 2;
    quality += hasWord(entry.nameWords, word) ? 2 : 0;
    for (std::size_t p = 0; p < entry.phrases.size(); ++p) {
      const std::string& text = entry.phrases[p].text;
      const auto isIn = [&](std::string_view other) { return phraseHas(text, other); };
      if (isIn(word) || means(isIn)) ++wordsInPhrase[p];
    }
  }
  // Words that stand together in one phrase mean more than words from here and there.
  quality += 4 * *std::ranges::max_element(wordsInPhrase);
  match = {matched == query.words.size() ? allWords : someWords, quality};
  return matched > 0 && 2 * matched >= query.words.size();
}

bool OperationSearch::match(const Entry& entry, const Query& query, Match& match) {
  return matchPhrases(entry, query, match) || matchWords(entry, query, match);
}

bool OperationSearch::isBeginningOfWord(std::string_view word) const {
  return beginsAny(vocabulary_, word);
}

// Each word that nothing is called by or begins with becomes the nearest one.
std::vector<std::string> OperationSearch::corrected(std::vector<std::string> words) const {
  constexpr std::size_t shortestCorrected = 4;
  for (std::string& word : words) {
    const bool isKnown = isBeginningOfWord(word) || isFiller(word) || !synonymsOf(word).empty();
    if (isKnown || word.size() < shortestCorrected) continue;
    if (const auto nearest = nearestName(word, vocabulary_)) word = *nearest;
  }
  return words;
}

std::vector<OperationSearch::Finding> OperationSearch::findings(const Query& query,
                                                                std::span<const InputFile> inputs) const {
  std::vector<Finding> findings;
  for (std::size_t place = 0; place < entries_.size(); ++place) {
    Finding finding{.type = entries_[place].type, .match = {}, .isRunnable = false, .place = place};
    if (!query.words.empty() && !match(entries_[place], query, finding.match)) continue;
    finding.isRunnable = !inputs.empty() && finding.type->canRun(inputs);
    findings.push_back(finding);
  }
  return findings;
}

std::vector<const OperationType*> OperationSearch::find(std::string_view text,
                                                        std::span<const InputFile> inputs) const {
  std::vector<std::string> words = searchWords(text.substr(0, longestText));
  words.resize(std::min(words.size(), mostWords));
  std::vector<Finding> found = findings(queryFor(corrected(std::move(words))), inputs);
  std::ranges::sort(found, {}, &Finding::rank);
  std::vector<const OperationType*> types;
  for (const Finding& finding : found) types.push_back(finding.type);
  return types;
}

}  // namespace quirn
