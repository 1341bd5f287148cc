// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_samples.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace quirn::platform {
namespace {

// How much of the old pixels, counted from `first`, goes into one new one.
struct Share {
  std::size_t first = 0;
  std::vector<float> weights;
};

std::vector<Share> shares(std::size_t from, std::size_t to, double step) {
  std::vector<Share> all(to);
  for (std::size_t i = 0; i < to; ++i) {
    const double begin = std::min(static_cast<double>(i) * step, static_cast<double>(from) - 1);
    const double end = std::min(begin + step, static_cast<double>(from));
    all[i].first = static_cast<std::size_t>(begin);
    for (std::size_t old = all[i].first; old < from && static_cast<double>(old) < end; ++old) {
      const double covered = std::min(end, static_cast<double>(old + 1)) - std::max(begin, static_cast<double>(old));
      all[i].weights.push_back(static_cast<float>(covered / (end - begin)));
    }
  }
  return all;
}

// Compiled so that several samples are worked on at once.
void addWeighted(float* __restrict sums, const std::uint8_t* __restrict row, std::size_t count, float weight) {
  for (std::size_t i = 0; i < count; ++i) sums[i] += weight * static_cast<float>(row[i]);
}

void appendReducedRow(std::string& bytes, const float* row, std::size_t components, const std::vector<Share>& columns) {
  for (const Share& share : columns) {
    for (std::size_t component = 0; component < components; ++component) {
      const float* sample = row + share.first * components + component;
      float sum = 0.5F;
      for (const float weight : share.weights) {
        sum += weight * *sample;
        sample += components;
      }
      bytes.push_back(static_cast<char>(static_cast<std::uint8_t>(std::min(sum, 255.0F))));
    }
  }
}

}  // namespace

PDFSamples reduced(PDFSamples samples, PDFPixelSize size) {
  const PDFPixelStep step{static_cast<double>(samples.size.width) / static_cast<double>(size.width),
                          static_cast<double>(samples.size.height) / static_cast<double>(size.height)};
  return reduced(std::move(samples), size, step);
}

PDFSamples reduced(PDFSamples samples, PDFPixelSize size, PDFPixelStep step) {
  if (size == samples.size && step.x == 1 && step.y == 1) return samples;
  const std::size_t perRow = samples.size.width * samples.components;
  const std::vector<Share> columns = shares(samples.size.width, size.width, step.x);
  PDFSamples result{size, samples.components, {}};
  result.bytes.reserve(size.width * size.height * samples.components);
  std::vector<float> sums(perRow);
  const auto* const source = reinterpret_cast<const std::uint8_t*>(samples.bytes.data());
  // Lines first: their sums run through memory in order.
  for (const Share& lines : shares(samples.size.height, size.height, step.y)) {
    std::ranges::fill(sums, 0.0F);
    for (std::size_t i = 0; i < lines.weights.size(); ++i)
      addWeighted(sums.data(), source + (lines.first + i) * perRow, perRow, lines.weights[i]);
    appendReducedRow(result.bytes, sums.data(), samples.components, columns);
  }
  return result;
}

}  // namespace quirn::platform
