// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Pages as another program paints them, and how far two such pictures are apart.

#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace quirn::tests {

// Rows from the top, three bytes to a pixel.
struct Picture {
  std::size_t width = 0;
  std::size_t height = 0;
  std::string bytes;

  // Empty where it isn't all there.
  Picture part(std::size_t left, std::size_t top, std::size_t partWidth, std::size_t partHeight) const;
};

struct Rendering {
  enum class Annotations { shown, hidden };

  int pixelsPerUnit = 1;  // the program takes a page's unit for a point, whatever the page says
  Annotations annotations = Annotations::shown;
};

// All pages as shown. Fails the test where the program that paints them is missing.
std::vector<Picture> renderedPages(const std::filesystem::path& file, const Rendering& rendering = {});

// Empty where both look alike to a person: edges may be smoothed differently, but hardly a pixel is of another colour.
std::string difference(const Picture& expected, const Picture& found);

// Empty where what isn't white takes the same place, within a few pixels on every side.
std::string displacement(const Picture& expected, const Picture& found);

}  // namespace quirn::tests
