// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/rendered_pages.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>

#include "support/process.h"

namespace quirn::tests {
namespace {

constexpr int anotherShade = 64;  // of 255, in any component
constexpr std::size_t onePixelIn = 2000;

// One portable pixmap, binary, of those that follow one another.
bool takePicture(std::istream& stream, Picture& picture) {
  std::string kind;
  int most = 0;
  if (!(stream >> kind >> picture.width >> picture.height >> most) || kind != "P6" || most != 255) return false;
  stream.get();
  picture.bytes.resize(picture.width * picture.height * 3);
  return static_cast<bool>(stream.read(picture.bytes.data(), std::ssize(picture.bytes)));
}

bool areApart(const Picture& one, const Picture& other, std::size_t pixel) {
  for (std::size_t i = pixel * 3; i < pixel * 3 + 3; ++i) {
    if (std::abs(static_cast<unsigned char>(one.bytes[i]) - static_cast<unsigned char>(other.bytes[i])) > anotherShade)
      return true;
  }
  return false;
}

// Left, top, right and bottom.
using Edges = std::array<int, 4>;

Edges inkOn(const Picture& picture) {
  Edges edges{1 << 20, 1 << 20, -1, -1};
  for (std::size_t pixel = 0; pixel < picture.width * picture.height; ++pixel) {
    if (picture.bytes.compare(pixel * 3, 3, "\xFF\xFF\xFF") == 0) continue;
    const int x = static_cast<int>(pixel % picture.width);
    const int y = static_cast<int>(pixel / picture.width);
    edges = {std::min(edges[0], x), std::min(edges[1], y), std::max(edges[2], x), std::max(edges[3], y)};
  }
  return edges;
}

}  // namespace

Picture Picture::part(std::size_t left, std::size_t top, std::size_t partWidth, std::size_t partHeight) const {
  if (left + partWidth > width || top + partHeight > height) return {};
  Picture cut{partWidth, partHeight, {}};
  for (std::size_t y = top; y < top + partHeight; ++y) cut.bytes += bytes.substr((y * width + left) * 3, partWidth * 3);
  return cut;
}

std::vector<Picture> renderedPages(const std::filesystem::path& file, const Rendering& rendering) {
  const std::filesystem::path program = "/usr/bin/pdftoppm";
  std::vector<Picture> pages;
  if (!exists(program)) {
    ADD_FAILURE() << program << " is missing: install poppler-utils (packages/test.txt)";
    return pages;
  }
  std::vector<std::string> arguments{"-r", fmt::format("{}", 72 * rendering.pixelsPerUnit), "-cropbox", file.string()};
  if (rendering.annotations == Rendering::Annotations::hidden) arguments.emplace_back("-hide-annotations");
  std::istringstream stream(tests::run({.arguments = arguments, .program = program}).output);
  for (Picture picture; takePicture(stream, picture);) pages.push_back(picture);
  EXPECT_FALSE(pages.empty()) << file << " has no page that can be painted";
  return pages;
}

std::string difference(const Picture& expected, const Picture& found) {
  if (expected.width != found.width || expected.height != found.height)
    return fmt::format("{}x{} became {}x{}", expected.width, expected.height, found.width, found.height);
  std::size_t apart = 0;
  std::size_t first = 0;
  for (std::size_t pixel = expected.width * expected.height; pixel-- > 0;) {
    if (!areApart(expected, found, pixel)) continue;
    ++apart;
    first = pixel;
  }
  if (apart <= expected.width * expected.height / onePixelIn) return "";
  return fmt::format("{} pixels differ, the first at {}, {}", apart, first % expected.width, first / expected.width);
}

std::string displacement(const Picture& expected, const Picture& found) {
  constexpr int nearby = 5;
  const Edges wanted = inkOn(expected);
  const Edges drawn = inkOn(found);
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (std::abs(wanted.at(i) - drawn.at(i)) > nearby)
      return fmt::format("{} became {}", fmt::join(wanted, " "), fmt::join(drawn, " "));
  }
  return "";
}

}  // namespace quirn::tests
