// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// How long a key press in the palette takes to be answered.

#include <benchmark/benchmark.h>

#include <array>

#include "catalog/catalog.h"
#include "core/operation_search.h"

namespace quirn {
namespace {

void searchOperations(benchmark::State& state) {
  static constexpr std::array texts{
      "", "p", "sha256", "comprss", "make smaller pdf", "remvoe metadta frm photso plese"};
  OperationRegistry registry;
  registerAllOperations(registry);
  const OperationSearch search(registry);
  const std::string_view text = texts.at(static_cast<std::size_t>(state.range(0)));
  state.SetLabel(std::string(text));
  for (auto _ : state) benchmark::DoNotOptimize(search.find(text));
}
BENCHMARK(searchOperations)->DenseRange(0, 5);

void registerOperations(benchmark::State& state) {
  for (auto _ : state) {
    OperationRegistry registry;
    registerAllOperations(registry);
    benchmark::DoNotOptimize(registry.operations().data());
  }
}
BENCHMARK(registerOperations);

void makeIndex(benchmark::State& state) {
  OperationRegistry registry;
  registerAllOperations(registry);
  for (auto _ : state) benchmark::DoNotOptimize(OperationSearch(registry));
}
BENCHMARK(makeIndex);

}  // namespace
}  // namespace quirn
