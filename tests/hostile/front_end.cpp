// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A front end to be killed: hostile_front_end CALL PROGRAM OUTPUT_FOLDER FILE... decodes the files, in workers, and
// unpacks those whose name ends in ".arc". If CALL is 0, it does so over and over; else once, and dies at that call of
// those that change files.

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "core/box/box.h"
#include "core/local_context.h"
#include "hostile/hostile_operations.h"
#include "hostile/killing_calls.h"

namespace {

using namespace quirn;

template <class Operation>
void runOn(box::Box& box, const std::vector<InputFile>& inputs, const std::filesystem::path& outputs) {
  if (inputs.empty()) return;
  LocalContext context(std::ssize(inputs), outputs);
  box.run(OperationType::of<Operation>().placedIn(Placement::boxed, "hostile"), inputs, nullptr, context);
  context.finish();
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::filesystem::path> words(argv + 1, argv + argc);
  std::vector<InputFile> inputs = takeIn(std::span(words).subspan(3)).files;
  const auto archives =
      std::ranges::stable_partition(inputs, [](const InputFile& input) { return input.url.extension() != ".arc"; });
  const std::vector<InputFile> toUnpack(archives.begin(), archives.end());
  inputs.erase(archives.begin(), inputs.end());
  const int call = std::stoi(words[0].native());
  box::Box box(words[1]);
  hostile::killAtCall(call);
  do {
    runOn<hostile::DecoderOperation>(box, inputs, words[2]);
    runOn<hostile::UnpackOperation>(box, toUnpack, words[2]);
  } while (call == 0);
}
