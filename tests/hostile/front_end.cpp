// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A front end to be killed: hostile_front_end PROGRAM OUTPUT_FOLDER FILE... runs the decoder on the files, in workers,
// over and over.

#include <filesystem>
#include <string>
#include <vector>

#include "core/box/box.h"
#include "core/local_context.h"
#include "hostile/hostile_operations.h"

int main(int argc, char** argv) {
  using namespace quirn;
  const std::vector<std::filesystem::path> words(argv + 1, argv + argc);
  const std::vector<InputFile> inputs = takeIn(std::span(words).subspan(2)).files;
  const OperationType type = OperationType::of<hostile::DecoderOperation>().placedIn(Placement::boxed, "hostile");
  box::Box box(words[0]);
  for (;;) {
    LocalContext context(std::ssize(inputs), words[1]);
    box.run(type, inputs, nullptr, context);
    context.finish();
  }
}
