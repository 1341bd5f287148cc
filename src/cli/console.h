// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Standard output for results, standard error for people.

#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quirn::cli {

// Thrown when standard output took less than it was given: a full disk, a closed pipe.
class OutputLost final : public std::runtime_error {
 public:
  OutputLost() : std::runtime_error("Couldn't write to standard output.") {}
};

// All of `text` on standard output, as it is. Throws OutputLost.
void print(std::string_view text);

// Lines on standard output: the exact bytes for a program that reads, platform::displayText() for a
// person. Throws OutputLost.
void printLines(std::span<const std::string> lines);
void printLine(const std::string& line);

enum class Tone { plain, bad };

// One line on standard error, colored on a terminal unless NO_COLOR is set.
void say(std::string_view line, Tone tone = Tone::plain);

// Standard error without a line end, for a line that is redrawn.
void draw(std::string_view text);

bool isErrorTerminal();

// The columns of the terminal at standard error, 80 if it doesn't say.
std::size_t terminalWidth();

// The longest beginning of `text` that takes at most `columns` of a terminal.
std::string fittingColumns(std::string_view text, std::size_t columns);

}  // namespace quirn::cli
