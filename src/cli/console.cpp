// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/console.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <cwchar>
#include <span>
#include <system_error>

#include "platform/file_descriptor.h"
#include "platform/text.h"

namespace quirn::cli {
namespace {

bool wantsColor() {
  const char* const noColor = std::getenv("NO_COLOR");
  const char* const terminal = std::getenv("TERM");
  const bool refused = noColor != nullptr && *noColor != '\0';
  return isErrorTerminal() && !refused && terminal != nullptr && std::string_view(terminal) != "dumb";
}

// Nobody is left to tell when standard error fails.
void writeError(std::string_view text) {
  try {
    platform::writeAll(STDERR_FILENO, std::as_bytes(std::span(text)));
  } catch (const std::system_error&) {
    return;
  }
}

std::size_t columnsOf(wchar_t character) {
  const int columns = ::wcwidth(character);
  return columns < 0 ? 1 : static_cast<std::size_t>(columns);
}

}  // namespace

void print(std::string_view text) {
  try {
    platform::writeAll(STDOUT_FILENO, std::as_bytes(std::span(text)));
  } catch (const std::system_error&) {
    throw OutputLost();
  }
}

void printLines(std::span<const std::string> lines) {
  const bool isTerminal = ::isatty(STDOUT_FILENO) == 1;
  std::string text;
  for (const std::string& line : lines) text += (isTerminal ? platform::displayText(line) : line) + "\n";
  print(text);
}

void printLine(const std::string& line) {
  printLines(std::span(&line, 1));
}

void say(std::string_view line, Tone tone) {
  const std::string shown = platform::displayText(line);
  writeError(tone == Tone::bad && wantsColor() ? fmt::format("\x1B[31m{}\x1B[0m\n", shown) : shown + "\n");
}

void draw(std::string_view text) {
  writeError(text);
}

bool isErrorTerminal() {
  return ::isatty(STDERR_FILENO) == 1;
}

std::size_t terminalWidth() {
  winsize size{};
  if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 80;
  return size.ws_col;
}

std::string fittingColumns(std::string_view text, std::size_t columns) {
  // wcwidth() knows the widths of Unicode only in a UTF-8 locale.
  std::setlocale(LC_CTYPE, "C.UTF-8");
  std::mbstate_t state{};
  std::size_t taken = 0;
  std::size_t used = 0;
  while (taken < text.size()) {
    wchar_t character = 0;
    const std::size_t length = std::mbrtowc(&character, text.data() + taken, text.size() - taken, &state);
    if (length == 0 || length > text.size() || used + columnsOf(character) > columns) break;
    used += columnsOf(character);
    taken += length;
  }
  return std::string(text.substr(0, taken));
}

}  // namespace quirn::cli
