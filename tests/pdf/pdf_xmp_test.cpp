// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_xmp.h"

#include <gtest/gtest.h>

namespace quirn::tests {
namespace {

TEST(PDFXmp, SaysWhatTheAttributesSayAndKeepsTheRest) {
  const std::string packet =
      "<?xpacket?><x:xmpmeta><rdf:RDF><rdf:Description rdf:about=\"\" pdf:Keywords='old' pdf:Producer=\"P\">"
      "<dc:title><rdf:Alt><rdf:li>old</rdf:li></rdf:Alt></dc:title><dc:subject/><dc:titles>kept</dc:titles>"
      "<dc:creator>\n old </dc:creator></rdf:Description></rdf:RDF></x:xmpmeta>";
  const auto changed =
      platform::xmpWith(packet, {.title = "A & <B>", .author = "", .subject = "é", .keywords = {"k", "l"}});
  EXPECT_EQ(changed,
            "<?xpacket?><x:xmpmeta><rdf:RDF><rdf:Description rdf:about=\"\"  pdf:Producer=\"P\">"
            "<dc:titles>kept</dc:titles></rdf:Description>"
            "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
            "xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\">"
            "<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">A &amp; &lt;B&gt;</rdf:li></rdf:Alt></dc:title>"
            "<dc:description><rdf:Alt><rdf:li xml:lang=\"x-default\">é</rdf:li></rdf:Alt></dc:description>"
            "<dc:subject><rdf:Bag><rdf:li>k</rdf:li><rdf:li>l</rdf:li></rdf:Bag></dc:subject>"
            "<pdf:Keywords>k, l</pdf:Keywords></rdf:Description></rdf:RDF></x:xmpmeta>");
}

TEST(PDFXmp, GivesUpOnBytesThatAreNoPacket) {
  for (const std::string packet : {"", "<dc:title", "<dc:title>x", "dc:title=", " dc:title='", "\xFF</rdf:RDF>"}) {
    EXPECT_EQ(platform::xmpWith(packet, {}), std::nullopt) << packet;
  }
}

}  // namespace
}  // namespace quirn::tests
