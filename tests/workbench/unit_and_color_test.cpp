// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/color.h"
#include "workbench/reference_tools.h"
#include "workbench/tool_answers.h"
#include "workbench/units.h"

namespace quirn::tests {
namespace {

// NIST Special Publication 811, appendix B.8, has the factors.
TEST(Units, Convert) {
  const auto of = [](const char* category, const char* unit) {
    return ToolSettings{{"category", category}, {"from", unit}};
  };
  expectAnswers(
      unitTool(),
      {{"the list and its mark", "100",
        "100 km =\n  100000000 mm\n  10000000 cm\n  100000 m\n  100 km  ←\n  3937007.874016 in\n"
        "  328083.989501 ft\n  109361.329834 yd\n  62.137119 mi\n  53.99568 nmi"},
       {"boiling water", "100", "100 C =\n  100 C  ←\n  212 F\n  373.15 K", of("Temperature", "c")},
       {"absolute zero", "-459.67", "-459.67 F =\n  -273.15 C\n  -459.67 F  ←\n  0 K", of("Temperature", "F")}});
  expectParts(unitTool(),
              {{"either case", "0", "\n  0 K  ←", of("Temperature", "k")},
               {"an atmosphere", "1", "  101325 Pa\n  101.325 kPa\n  1.01325 bar\n  1013.25 hPa\n  14.695949 psi",
                of("Pressure", "atm")},
               {"mercury", "1", "  33.863886 hPa", of("Pressure", "inHg")},
               {"pints of the US", "1", "  473.176473 ml", of("Volume", "pt")},
               {"a stone", "1", "  6.350293 kg", of("Mass", "st")},
               {"a knot", "1", "  1.852 km/h", of("Speed", "kn")},
               {"an acre", "1", "  4046.856422 m2", of("Area", "ac")},
               {"binary bytes", "1", "  1.073742 GB", of("Data", "gib")},
               {"an hour of power", "1", "  860.42065 kcal", of("Energy", "kWh")},
               {"a small result keeps six decimals", "1", "  0 TB", of("Data", "B")},
               {"no more digits than were typed", "1e20",
                "1" + std::string(20, '0') + " km =\n  1" + std::string(26, '0') + " mm\n"},
               {"larger than any double", "1e308", "  1" + std::string(314, '0') + " mm\n"}});
}

TEST(Units, SayWhatTheyCannotRead) {
  for (const char* input : {"", "1 2", "1,5", "0x10", "nan", "inf", "1e400", "--1", "+-1", "five"})
    EXPECT_EQ(answer(unitTool(), input),
              "error: Enter a single number to convert (got \"" + std::string(input) + "\").");
  expectAnswers(unitTool(),
                {{"the units there are",
                  "1",
                  "error: \"km\" isn't a Speed unit. Valid symbols: m/s, km/h, mph, kn.",
                  {{"category", "Speed"}}},
                 {"a category there isn't", "1", "error: Unknown category \"Luck\".", {{"category", "Luck"}}}});
  EXPECT_EQ(answer(unitTool(), std::string(2'000'000, 'x')).size(),
            std::string("error: Enter a single number to convert (got \"…\").").size() + 200);
}

// hsl, hsb by python3's colorsys; OKLCH of the primaries as CSS Color 4 gives it.
TEST(ColorConverter, GivesEveryForm) {
  expectAnswers(colorConverterTool(),
                {{"two colors", "#3B82F6\n\n  RebeccaPurple ",
                  "#3B82F6\n  HEX   #3B82F6\n  RGB   rgb(59, 130, 246)\n  HSL   hsl(217, 91%, 60%)\n"
                  "  HSB   hsb(217, 76%, 96%)\n  CMYK  cmyk(76%, 47%, 0%, 4%)\n  OKLCH oklch(62.3% 0.188 259.8)\n\n"
                  "RebeccaPurple\n  HEX   #663399\n  RGB   rgb(102, 51, 153)\n  HSL   hsl(270, 50%, 40%)\n"
                  "  HSB   hsb(270, 67%, 60%)\n  CMYK  cmyk(33%, 67%, 0%, 40%)\n  OKLCH oklch(44% 0.16 303.4)"},
                 {"transparency", "transparent",
                  "transparent\n  HEX   #00000000\n  RGB   rgb(0, 0, 0 / 0)\n  HSL   hsl(0, 0%, 0% / 0)\n"
                  "  HSB   hsb(0, 0%, 0%)\n  CMYK  cmyk(0%, 0%, 0%, 100%)\n  OKLCH oklch(0% 0 0 / 0)"},
                 {"no input", "\n \n", "error: Enter at least one color, one per line."},
                 {"which line is wrong", "red\nABCDE",
                  "error: Couldn’t parse “ABCDE” — try #RRGGBB, rgb(…), hsl(…), or a color name."}});
  expectParts(colorConverterTool(),
              {{"red", "red", "oklch(62.8% 0.258 29.2)"}, {"lime", "lime", "oklch(86.6% 0.295 142.5)"}});
}

TEST(ColorReader, ReadsEveryForm) {
  const struct {
    const char* text;
    const char* hex;
  } rows[] = {{"abc", "#AABBCC"},
              {"#1234", "#11223344"},
              {"12345678", "#12345678"},
              {"#ABCDEFff", "#ABCDEF"},
              {"rgb(255,128,0)", "#FF8000"},
              {"RGBA( 100% 50% 0% / 50% )", "#FF800080"},
              {"rgb(300, -5, 0, .5)", "#FF000080"},
              {"hsl(-120, 100%, 50%)", "#0000FF"},
              {"hsl(480deg 100 25)", "#008000"},
              {"hsla(0, 0%, 50%, 2)", "#808080"},
              {"hsl(1e300, 50%, 50%)", "#BF4040"}};
  for (const auto& row : rows) EXPECT_EQ(hexText(colorIn(row.text).value_or(Color{})), row.hex) << row.text;
  for (const char* wrong : {"", "#", "12", "#12345", "#ggg", "rgb(1,2)", "rgb(1,2,3", "rgb 1 2 3", "rgb(1,2,x)",
                            "rgb(nan,0,0)", "hsl(0turn,1%,1%)", "lab(1 2 3)", "rgb(1,2,3,x)", "()", "\xFF", "é"})
    EXPECT_FALSE(colorIn(wrong)) << wrong;
  EXPECT_FALSE(colorIn("rgb(" + std::string(5'000'000, ',') + ")"));
}

// WCAG 2.1: black on white is 21:1; its understanding documents have #777 on white at 4.48:1.
TEST(ColorContrast, ChecksEachLevel) {
  const auto verdicts = [](const char* one, const char* two, const char* three, const char* four) {
    return fmt::format(
        "\n\n  AA  normal (≥ 4.5)   {}\n  AA  large  (≥ 3.0)   {}\n  AAA normal (≥ 7.0)   {}\n"
        "  AAA large  (≥ 4.5)   {}",
        one, two, three, four);
  };
  expectAnswers(
      colorContrastTool(),
      {{"just too little", "#777777\n#ffffff",
        "Contrast  4.48:1\n  Foreground  #777777\n  Background  #FFFFFF" + verdicts("FAIL", "PASS", "FAIL", "FAIL")},
       {"the most there is", "white\nblack\nred",
        "Contrast  21:1\n  Foreground  #FFFFFF\n  Background  #000000" + verdicts("PASS", "PASS", "PASS", "PASS")},
       {"none at all", "red\nred",
        "Contrast  1:1\n  Foreground  #FF0000\n  Background  #FF0000" + verdicts("FAIL", "FAIL", "FAIL", "FAIL")},
       {"one color", "red", "error: Enter two colors — foreground on line 1, background on line 2."},
       {"which is wrong", "rde\nred", "error: Couldn’t parse foreground “rde”."},
       {"the other", "red\nrde", "error: Couldn’t parse background “rde”."}});
}

TEST(Gradient, WritesCss) {
  expectAnswers(
      gradientTool(),
      {{"two stops", "#FF512F\n#DD2476", "background: linear-gradient(90deg, #FF512F 0%, #DD2476 100%);"},
       {"four stops and an angle",
        "red\nlime\nblue\ntransparent",
        "background: linear-gradient(45deg, #FF0000 0%, #00FF00 33%, #0000FF 67%, #00000000 100%);",
        {{"angle", "45"}}},
       {"a circle",
        "red\nblue",
        "background: radial-gradient(circle, #FF0000 0%, #0000FF 100%);",
        {{"type", "radial"}}},
       {"one color", "red", "error: Enter at least two colors, one per line."},
       {"what is wrong", "red\nnope", "error: Couldn’t parse “nope” — try #RRGGBB, rgb(…), hsl(…), or a color name."}});
}

}  // namespace
}  // namespace quirn::tests
