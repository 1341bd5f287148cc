// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_flate_filter.h"

#include <cstdint>
#include <memory>
#include <optional>

#include "platform/pdf_library.h"
#include "platform/pdf_predictor.h"

namespace quirn::platform {
namespace {

constexpr std::int64_t alwaysAllowed = std::int64_t{16} << 20;  // bytes
constexpr std::int64_t mostBytes = std::int64_t{256} << 20;
constexpr std::int64_t largestRatio = 200;

// Counts what goes into the decoding and what comes out of it.
class Balance {
 public:
  void addInput(std::size_t count) { input_ += static_cast<std::int64_t>(count); }
  void addOutput(std::size_t count) {
    output_ += static_cast<std::int64_t>(count);
    if (output_ > mostBytes || (output_ > alwaysAllowed && output_ / largestRatio > input_)) throw PDFStreamTooLarge();
  }

 private:
  std::int64_t input_ = 0;
  std::int64_t output_ = 0;
};

class CountedInflate final : public Pl_Flate {
 public:
  CountedInflate(Pipeline* target, Balance& balance) : Pl_Flate("inflate", target, a_inflate), balance_(balance) {}
  void write(const unsigned char* bytes, std::size_t count) override {
    balance_.addInput(count);
    Pl_Flate::write(bytes, count);
  }

 private:
  Balance& balance_;
};

class CountedOutput final : public Pipeline {
 public:
  CountedOutput(Pipeline* target, Balance& balance) : Pipeline("counted", target), balance_(balance) {}
  void write(const unsigned char* bytes, std::size_t count) override {
    balance_.addOutput(count);
    getNext()->write(bytes, count);
  }
  void finish() override { getNext()->finish(); }

 private:
  Balance& balance_;
};

class FlateFilter final : public QPDFStreamFilter {
 public:
  bool setDecodeParms(QPDFObjectHandle parameters) override {
    if (parameters.isNull()) return true;
    predictor_ = parameters.isDictionary() ? predictorOf(parameters) : std::nullopt;
    return predictor_.has_value();
  }

  Pipeline* getDecodePipeline(Pipeline* next) override {
    // Ours have bounds of their own.
    if (dynamic_cast<Pl_Buffer*>(next) != nullptr) {
      output_ = std::make_unique<CountedOutput>(next, balance_);
      next = output_.get();
    }
    if (predictor_ && predictor_->kind != PDFPredictor::Kind::none) {
      rows_ = std::make_unique<PDFPredictedRows>(*predictor_, next);
      next = rows_.get();
    }
    inflate_ = std::make_unique<CountedInflate>(next, balance_);
    return inflate_.get();
  }

 private:
  std::optional<PDFPredictor> predictor_;
  Balance balance_;
  std::unique_ptr<CountedOutput> output_;
  std::unique_ptr<PDFPredictedRows> rows_;
  std::unique_ptr<CountedInflate> inflate_;
};

}  // namespace

void boundFlateStreams() {
  static const bool isDone = [] {
    QPDF::registerStreamFilter("/FlateDecode", [] { return std::make_shared<FlateFilter>(); });
    return true;
  }();
  static_cast<void>(isDone);
}

}  // namespace quirn::platform
