// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the program and a worker say to one another. Every message begins with its kind; what follows is written here
// beside it. Several may be sent as one, since sending costs more than writing them. The program is the broker: it
// opens, stages and publishes, and passes descriptors; the worker asks.

#pragma once

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/box/message.h"
#include "core/input_file.h"
#include "core/operation_error.h"
#include "core/staged_folder.h"

namespace quirn::box {

// From the program.
enum class Tell {
  // New requests: serial, whether each input is a request of its own, whether it is for the settings alone, operation,
  // output folder ("" for none), total of the progress, number of inputs, number of pieces of settings. So many "input"
  // and "setting" messages follow. Comes with the descriptors of the first inputs, as far as they are open already.
  begin,
  input,    // an input file; the n-th of a request is input number n
  setting,  // key, a piece of its value; pieces of the same key in a row belong together

  // The answers to what a worker asks.
  opened,     // with descriptors, of one file or of several inputs in a row
  neighbour,  // place, location; with a descriptor if it is here
  listed,     // how many "input" messages follow, number of the first
  staged,     // number, location; with a descriptor if it is no folder
  linked,     // whether the link was made
  done,       // a location or a type, where the question was for one
  failed,     // an error
  outside,    // the name that leads out of a folder output
  cancelled,
};

// From a worker.
enum class Ask {
  ready,  // once, after its lock-down

  // Questions; each is answered before the next.
  open,           // number of an input, how many from there on are wanted at most
  neighbour,      // number of an input, name
  enumerate,      // number of an input
  typeOf,         // number of an input
  stage,          // number of an input, stem, suffix, extension
  stageFolder,    // the same
  beginFile,      // number of an output, name, date
  link,           // number of an output, name, target
  settle,         // number of an output
  publishFolder,  // number of an output, role
  publishStaged,  // -
  published,      // number of an output

  // Not answered.
  publish,        // number of an output, role
  publishWhole,   // number of an input, stem, suffix, extension; number of an output, role, content
  discard,        // number of an output
  discardFolder,  // number of an output
  makeFolder,     // number of an output, name
  abandonFile,    // number of an output: takes back what beginFile gave last
  writeFile,      // number of an output, name, date, content
  state,          // status, total, completed, signs of life

  setting,  // as in a request; of one for the settings alone

  // How the request ended; "finished", "failed", "cancelled" and "fault" are the last message of a request. What
  // follows is about the next one of those that were told together.
  output,    // number of an output
  failure,   // file name, message
  finished,  // whether there is a summary, summary
  failed,    // an error
  cancelled,
  fault,  // text
};

// Spoken to a worker while it is busy: the serial of its requests, which stops them, or this.
inline constexpr std::uint32_t howFar = 0;

// Longer texts are cut by the worker, and refused by the program.
inline constexpr std::size_t longestText = 16 << 10;
// What the worker cuts, it cuts between two characters.
std::string_view cutText(std::string_view text);

// A setting in pieces, each with its key; the value may be longer than a message.
struct Setting {
  std::string key;
  std::string value;
};
inline constexpr std::size_t longestPiece = 32 << 10;
template <class Kind>
std::vector<MessageWriter> messagesOf(Kind kind, const Setting& setting) {
  std::vector<MessageWriter> messages;
  std::string_view rest = setting.value;
  do {
    MessageWriter message;
    message.choice(kind).text(setting.key).text(rest.substr(0, longestPiece));
    messages.push_back(std::move(message));
    rest.remove_prefix(std::min(rest.size(), longestPiece));
  } while (!rest.empty());
  return messages;
}
// Reads a piece into the settings so far.
void readPiece(MessageReader& message, std::vector<Setting>& settings);

void write(MessageWriter& message, const InputFile& input);
// `typeOf` is asked for the type of a file if the program doesn't know it yet and the operation wants it.
using TypeOf = std::function<std::string(const std::filesystem::path&)>;
InputFile readInputFile(MessageReader& message, const TypeOf& typeOf);

void write(MessageWriter& message, StagedFolder::Date date);
StagedFolder::Date readDate(MessageReader& message);

void write(MessageWriter& message, const OperationError& error);
OperationError readError(MessageReader& message);

}  // namespace quirn::box
