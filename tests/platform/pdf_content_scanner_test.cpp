// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_content_scanner.h"

#include <gtest/gtest.h>

#include <string>

namespace quirn::platform {
namespace {

using namespace std::string_literals;

std::string operatorsIn(std::string_view content) {
  std::string found;
  PDFContentScanner scanner(content);
  while (const auto word = scanner.next()) found += std::string(*word) + ' ';
  return found;
}

struct Row {
  const char* sentence;
  std::string content;
  const char* operators;
};

const Row rows[] = {
    {"operators stand behind their operands", "q 1 0 0 1 5 6 cm /Im1 Do Q", "q cm Do Q "},
    {"no blanks are needed beside brackets", "q[1 2]0 d(a)Tj<61>Tj/F 1 Tf", "q d Tj Tj Tf "},
    {"strings may hold brackets, escapes and operators", "(a (q) \\) Q) Tj", "Tj "},
    {"a comment ends with its line", "q % Q Q\nS", "q S "},
    {"dictionaries hold no operators", "/OC <</Q (Q) /R [/Do]>> BDC EMC", "BDC EMC "},
    {"an inline image is one operator, whatever its bytes", "q BI /W 1 ID \0EI Q\xFF EI Q"s, "q BI Q "},
    {"numbers may be odd", "+1 -.5 --3 4. .5 1e5 inf cm", "inf cm "},
    {"true, false and null are operands", "true false null S", "S "},
};

TEST(PDFContentScanner, FindsOperatorsAndNothingElse) {
  for (const Row& row : rows) EXPECT_EQ(operatorsIn(row.content), row.operators) << row.sentence;
}

TEST(PDFContentScanner, GivesTheOperandsOfAnOperator) {
  PDFContentScanner scanner("7 /First 1 0 0 -1 2.5 +6 cm /Im#20a Do");
  ASSERT_EQ(scanner.next(), "cm");
  EXPECT_EQ(scanner.matrix(), (PDFMatrix{1, 0, 0, -1, 2.5, 6}));
  ASSERT_EQ(scanner.next(), "Do");
  EXPECT_EQ(scanner.name(), "Im#20a");
  EXPECT_FALSE(scanner.matrix());
}

struct BalanceRow {
  const char* content;
  long unmatchedRestores;
  long unmatchedSaves;
  bool endsInside;
};

const BalanceRow balanceRows[] = {
    {"q Q", 0, 0, false},        {"q q Q", 0, 1, false},     {"Q Q q", 2, 1, false}, {"q (Q) Tj", 0, 1, false},
    {"q (broken Q", 0, 1, true}, {"q [1 2", 0, 1, true},     {"<</A", 0, 0, true},   {"<61", 0, 0, true},
    {"BI ID xx", 0, 0, true},    {"[1 2 TJ Q", 1, 0, false},
};

TEST(PDFContentScanner, TellsHowContentLeavesTheStackOfStates) {
  for (const BalanceRow& row : balanceRows) {
    const PDFContentBalance balance = balanceOf(row.content);
    EXPECT_EQ(balance.unmatchedRestores, row.unmatchedRestores) << row.content;
    EXPECT_EQ(balance.unmatchedSaves, row.unmatchedSaves) << row.content;
    EXPECT_EQ(balance.endsInside, row.endsInside) << row.content;
  }
}

}  // namespace
}  // namespace quirn::platform
