// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// One operation on the same files, in this process or in workers, to see what the box costs:
//   both_ways here|boxed PROGRAM OUTPUT_FOLDER FILE...   a whole run, as a front end would
//   both_ways files PROGRAM OUTPUT_FOLDER FILE...        one file after the other; prints what a cold and a warm worker
//                                                        add to each, in microseconds

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "core/box/box.h"
#include "core/local_context.h"
#include "documents/hash_files_operation.h"

namespace {

using namespace quirn;
using Clock = std::chrono::steady_clock;

// Of a run on one file. The folder is best in memory, where nothing waits for a disk.
double microsecondsFor(box::Box& box, const OperationType& type, const InputFile& input, LocalContext& context) {
  const auto began = Clock::now();
  box.run(type, std::span(&input, 1), nullptr, context);
  return std::chrono::duration<double, std::micro>(Clock::now() - began).count();
}

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

void compareFiles(const std::filesystem::path& program, const std::vector<InputFile>& inputs, LocalContext& context) {
  const OperationType here = OperationType::of<HashFilesOperation>().placedIn(Placement::inProcess);
  const OperationType boxed = here.placedIn(Placement::boxed);
  std::vector<double> inProcess, warm, cold;
  box::Box warmBox(program);
  microsecondsFor(warmBox, boxed, inputs.front(), context);
  for (const InputFile& input : inputs) {
    inProcess.push_back(microsecondsFor(warmBox, here, input, context));
    warm.push_back(microsecondsFor(warmBox, boxed, input, context));
    box::Box coldBox(program);
    cold.push_back(microsecondsFor(coldBox, boxed, input, context));
  }
  fmt::print("  in process {:9.0f} us a file\n", median(inProcess));
  fmt::print("  warm worker adds {:9.0f} us, wanted at most 500\n", median(warm) - median(inProcess));
  fmt::print("  cold worker adds {:9.0f} us, wanted at most 15000\n", median(cold) - median(inProcess));
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  const std::vector<std::filesystem::path> files(words.begin() + 3, words.end());
  const Placement placement = words[0] == "here" ? Placement::inProcess : Placement::boxed;
  const OperationType type = OperationType::of<HashFilesOperation>().placedIn(placement);
  box::Box box(words[1]);
  if (words[0] != "files") box.prepare(type, std::ssize(files));
  const std::vector<InputFile> inputs = takeIn(files).files;
  LocalContext context(std::ssize(inputs), words[2]);
  if (words[0] == "files") {
    compareFiles(words[1], inputs, context);
  } else {
    box.run(type, inputs, nullptr, context);
  }
  context.finish();
}
