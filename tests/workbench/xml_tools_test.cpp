// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include "workbench/structured_tools.h"
#include "workbench/tool_rows.h"
#include "workbench/xml_format.h"

namespace quirn::tests {
namespace {

std::string formatted(std::string_view text, XmlLayout layout = XmlLayout::pretty) {
  return formattedXml(text, layout, 1 << 30);
}

TEST(XmlFormat, laysOutWhatIsLayout) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"<a><b>t</b><c/></a>", "<a>\n  <b>t</b>\n  <c/>\n</a>"},
      {" <a >\n\n<b  x = '1'\ty='\"'/></a >", "<a>\n  <b x=\"1\" y='\"'/>\n</a>"},
      {"<a></a>", "<a></a>"},
      {"<a> </a>", "<a> </a>"},
      {"<a><!-- c --><?p d?></a><!--e-->", "<a>\n  <!-- c -->\n  <?p d?>\n</a>\n<!--e-->"},
      // Text of its own: not a blank is changed in it.
      {"<p>one <b>two</b> <i> three</i>\n</p>", "<p>one <b>two</b> <i> three</i>\n</p>"},
      {"<a><p><b/> x</p><q><r/></q></a>", "<a>\n  <p><b/> x</p>\n  <q>\n    <r/>\n  </q>\n</a>"},
      {"<a><![CDATA[ <b> ]]> </a>", "<a><![CDATA[ <b> ]]> </a>"},
      {"<a>&#32;<b/> </a>", "<a>&#32;<b/> </a>"},
      {"<a xml:space=\"preserve\"> <b> <c/> </b></a>", "<a xml:space=\"preserve\"> <b> <c/> </b></a>"},
      // References stay as they were written, and nothing is resolved.
      {"<a>&lt;&#xE9;</a>", "<a>&lt;&#xE9;</a>"},
      {"<!DOCTYPE a [<!ENTITY e \"]>\">]><a>&e;</a>", "<!DOCTYPE a [<!ENTITY e \"]>\">]>\n<a>&e;</a>"},
      {"<!DOCTYPE html SYSTEM 'x.dtd'><html>&nbsp;</html>", "<!DOCTYPE html SYSTEM 'x.dtd'>\n<html>&nbsp;</html>"},
      // The output is UTF-8, so it must say so.
      {"<?xml version='1.0' encoding='ISO-8859-1'?><a>é</a>", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>é</a>"},
      {"\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?><a/>",
       "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<a/>"},
      {"<a>x\r\ny\r</a>", "<a>x\ny\n</a>"},
  };
  for (const auto& [text, pretty] : rows) {
    EXPECT_EQ(formatted(text), pretty);
    EXPECT_EQ(formatted(pretty), pretty) << "laid out twice";
    EXPECT_EQ(formatted(pretty, XmlLayout::compact), formatted(text, XmlLayout::compact)) << pretty;
  }
}

TEST(XmlFormat, minifies) {
  EXPECT_EQ(formatted("<?xml version=\"1.0\"?>\n<a>\n <b> t </b>\n <c />\n</a>\n", XmlLayout::compact),
            "<?xml version=\"1.0\"?><a><b> t </b><c/></a>");
}

TEST(XmlTool, tellsWhatIsWrongAndWhere) {
  const auto row = [](std::string input, const std::string& reason) {
    return ToolRow{"a reason for " + input, std::move(input), "! That isn’t valid XML — " + reason, {}};
  };
  expectRows(xmlTool(), {
                            row("", "line 1, column 1: there is no root element."),
                            row("hello", "line 1, column 1: text stands outside the root element."),
                            row("<é>\n</b>", "line 2, column 1: “</b>” stands where “</é>” is due."),
                            row("<a>", "line 1, column 4: the element “a” is never closed."),
                            row("</a>", "line 1, column 1: “</a>” closes nothing."),
                            row("<a/><b/>", "line 1, column 5: there is a second root element."),
                            row("<a>é&</a>", "line 1, column 5: “&” begins no reference; write “&amp;”."),
                            row("<a>&x;</a>", "line 1, column 4: the entity “&x;” is not declared."),
                            row("<a>&#0;</a>", "line 1, column 4: “&#0;” is no character that XML allows."),
                            row("<a>&#xD800;</a>", "line 1, column 4: “&#xD800;” is no character that XML allows."),
                            row("<a b='1' b='2'/>", "line 1, column 10: the attribute “b” is there twice."),
                            row("<a b='<'/>", "line 1, column 7: “<” may not stand in the value of an attribute."),
                            row("<a b='1'c='2'/>", "line 1, column 9: “>” is missing."),
                            row("<a b/>", "line 1, column 5: “=” is missing."),
                            row("<a b=1/>", "line 1, column 6: a value in quotes is missing."),
                            row("<a b='1/>", "line 1, column 6: this quote is never closed."),
                            row("<a>]]></a>", "line 1, column 4: “]]>” may not stand in text."),
                            row("<a><!-- -- --></a>", "line 1, column 9: “--” may not stand in a comment."),
                            row("<a><!--", "line 1, column 4: this comment never ends."),
                            row("<a><?xml version='1.0'?></a>",
                                "line 1, column 4: the XML declaration may stand at the very beginning alone."),
                            row("<1/>", "line 1, column 2: a name is missing."),
                            row("<a/><!DOCTYPE a>", "line 1, column 5: a document type may not stand here."),
                            row(std::string("<a>\0</a>", 8), "line 1, column 4: a character that XML doesn’t allow."),
                            row("<a>\xFF</a>", "line 1, column 4: a character that XML doesn’t allow."),
                            row("<a>\xEF\xBF\xBF</a>", "line 1, column 4: a character that XML doesn’t allow."),
                        });
}

TEST(XmlTool, validates) {
  const auto row = [](std::string input, const std::string& root, int children) {
    return ToolRow{input,
                   input,
                   fmt::format("✓ Well-formed XML — {} root, {} top-level children.", root, children),
                   {{"mode", "Validate"}}};
  };
  expectRows(xmlTool(),
             {row("<a/>", "a", 0), row("<a> </a>", "a", 0), row("<c><b/>\r\n<b><b/>t</b> <!--x--></c>", "c", 3),
              row("<a>t<![CDATA[u]]>&lt;<b/> <b/></a>", "a", 4)});
  EXPECT_EQ(outcome(xmlTool(), xmlTool().sampleInput, {{"mode", "Validate"}}),
            "✓ Well-formed XML — catalog root, 2 top-level children.");
}

TEST(XmlTool, everyBeginningOfADocumentIsRefused) {
  const std::string text =
      "<?xml version=\"1.0\"?><!DOCTYPE a [<!ENTITY e 'x'>]><!--c--><a b='&e;'>é&#65;<![CDATA[x]]><c/><?p d?></a>";
  EXPECT_EQ(outcome(xmlTool(), text).substr(0, 1), "<");
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_EQ(outcome(xmlTool(), text.substr(0, length)).substr(0, 1), "!") << length;
  }
}

// A billion laughs, and a file of the system.
constexpr std::string_view bomb =
    R"(<!DOCTYPE a [<!ENTITY a "ha"><!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;"><!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;">
<!ENTITY d "&c;&c;&c;&c;&c;&c;&c;&c;"><!ENTITY e "&d;&d;&d;&d;&d;&d;&d;&d;"><!ENTITY f "&e;&e;&e;&e;&e;&e;&e;&e;">
<!ENTITY g "&f;&f;&f;&f;&f;&f;&f;&f;"><!ENTITY h "&g;&g;&g;&g;&g;&g;&g;&g;"><!ENTITY x SYSTEM "/etc/passwd">]>
<r at="&h;">&h;<t>&x;</t></r>)";

TEST(XmlTools, resolveNothing) {
  EXPECT_LT(outcome(xmlTool(), bomb).size(), 2 * bomb.size());
  EXPECT_EQ(outcome(xmlJsonTool(), bomb),
            "{\n  \"r\": {\n    \"@at\": \"&h;\",\n    \"t\": \"&x;\",\n    \"#text\": \"&h;\"\n  }\n}");
  EXPECT_EQ(outcome(xpathTool(), bomb, {{"path", "//t"}}), "1 match:\n\n[0] <t>&x;</t>");
  EXPECT_EQ(outcome(xpathTool(), bomb, {{"path", "string(/r)"}}), "1 match:\n\n[0] ");
  EXPECT_EQ(outcome(xpathTool(), bomb, {{"path", "string(/r/@at)"}}), "1 match:\n\n[0] &h;");
}

TEST(XmlTools, endDeepNestingWithAReason) {
  const std::string reason = "! This XML is nested more than 1000 levels deep.";
  const auto nested = [](std::size_t depth) { return repeated("<a>", depth) + repeated("</a>", depth); };
  for (const TextTool* tool : {&xmlTool(), &xmlJsonTool(), &xpathTool()}) {
    EXPECT_EQ(outcome(*tool, nested(10'000), {{"path", "//a"}}), reason) << tool->id;
    EXPECT_NE(outcome(*tool, nested(xmlDepthLimit), {{"path", "/a/a"}}).substr(0, 1), "!") << tool->id;
  }
  EXPECT_EQ(outcome(xmlJsonTool(), std::string(10'000, '['), {{"mode", "JSON → XML"}}),
            "! This JSON is nested more than 1000 levels deep.");
}

TEST(XmlJson, fromXml) {
  const auto row = [](std::string loss, std::string xml, const std::string& json) {
    const std::string pretty = outcome(jsonTool(), json);
    return ToolRow{std::move(loss), std::move(xml), pretty, {}};
  };
  expectRows(xmlJsonTool(),
             {
                 row("text alone is a string, trimmed", "<a>\n x &lt; &#233; <![CDATA[<]]> </a>", R"({"a":"x < é <"})"),
                 row("nothing is an empty string", "<a/>", R"({"a":""})"),
                 row("repeated names are an array in order, at the first one's place",
                     "<a><b>1</b><c/><b>2</b><b/></a>", R"({"a":{"b":["1","2",""],"c":""}})"),
                 row("attributes come first, text last", "<a x='1' xmlns:p='u'> t<b/>u </a>",
                     R"({"a":{"@x":"1","@xmlns:p":"u","b":"","#text":"tu"}})"),
                 row("layout is no text", "<a x=''>\n  <b/>\n</a>", R"({"a":{"@x":"","b":""}})"),
                 row("slashes stay readable", "<p:a>http://x</p:a>", R"({"p:a":"http://x"})"),
             });
  EXPECT_EQ(outcome(xmlJsonTool(), "<a>"), "! Invalid XML.");
  EXPECT_EQ(outcome(xmlJsonTool(), ""), "! Invalid XML.");
}

TEST(XmlJson, toXml) {
  const auto row = [](std::string loss, std::string json, std::string xml) {
    if (!xml.starts_with('!')) xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + xml;
    return ToolRow{std::move(loss), std::move(json), std::move(xml), {{"mode", "JSON → XML"}}};
  };
  expectRows(
      xmlJsonTool(),
      {
          row("one key is the root", R"({"a":{"@x":"1\n\"<","b":["t",true,1.50,null],"c":[]}})",
              "<a x=\"1&#10;&quot;&lt;\">\n  <b>t</b>\n  <b>true</b>\n  <b>1.50</b>\n  <b/>\n</a>"),
          row("several keys get a root", R"({"a":1,"b":"<&>"})", "<root>\n  <a>1</a>\n  <b>&lt;&amp;&gt;</b>\n</root>"),
          row("an attribute alone is none", R"({"@a":1})", "<root a=\"1\"/>"),
          row("an array has items", "[1,[2,3]]",
              "<root>\n  <item>1</item>\n  <item>\n    <item>2</item>\n    <item>3</item>\n  </item>\n</root>"),
          row("text beside children is not laid out", R"({"p":{"#text":"x ","b":"y"}})", "<p>x <b>y</b></p>"),
          row("nothing inside", R"({"a":{}})", "<a/>"),
          row("a single value is refused", "1", "! Invalid JSON."),
          row("no JSON", "{", "! Invalid JSON."),
          row("a key that is no name", R"({"a b":1})", "! “a b” can’t be the name of an element or attribute in XML."),
          row("an attribute that is no name", R"({"a":{"@":1}})",
              "! “” can’t be the name of an element or attribute in XML."),
          row("what XML can't hold", R"(["\u0000"])", "! A text holds a character that XML doesn’t allow."),
          row("half a character", R"(["\ud800"])", "! A text holds a character that XML doesn’t allow."),
      });
}

TEST(XPath, findsNodesAndValues) {
  const std::string books = R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<c xmlns:p="urn:p"><book id="1"> <title>Ä &amp; B</title></book><book id="2"><title/><p:x/></book></c>)";
  const auto row = [&](std::string path, std::string output) {
    return ToolRow{path, books, std::move(output), {{"path", path}}};
  };
  expectRows(
      xpathTool(),
      {
          row("//book/title", "2 matches:\n\n[0] <title>Ä &amp; B</title>\n[1] <title/>"),
          row(" //book[@id='2'] ", "1 match:\n\n[0] <book id=\"2\"><title/><p:x/></book>"),
          row("//book/@id", "2 matches:\n\n[0] id=\"1\"\n[1] id=\"2\""),
          row("//title/text()", "1 match:\n\n[0] Ä &amp; B"),
          row("//p:x", "1 match:\n\n[0] <p:x/>"),
          row("count(//book)", "1 match:\n\n[0] 2"),
          row("//none", "No matches."),
          row("", "! Enter an XPath expression."),
          row("//[", "! That isn’t a valid XPath expression — the expression can’t be read (at character 3)."),
          row("é[", "! That isn’t a valid XPath expression — the expression can’t be read (at character 3)."),
          row("f()", "! That isn’t a valid XPath expression — there is no such function."),
          row("//q:x", "! That isn’t a valid XPath expression — the document declares no such namespace prefix."),
      });
  EXPECT_EQ(outcome(xpathTool(), "<a>"), "! Invalid XML.");
}

TEST(XPath, doesNotWorkForEver) {
  const std::string wide = "<a>" + repeated("<b/>", 20'000) + "</a>";
  EXPECT_EQ(outcome(xpathTool(), wide, {{"path", "//*[count(//*[count(//*) > 1]) > 1]"}}),
            "! This expression takes too long on this document — try a simpler one.");
}

}  // namespace
}  // namespace quirn::tests
