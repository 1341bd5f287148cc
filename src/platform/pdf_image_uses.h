// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// How large the pages show their pictures, for the sources of platform/ alone.

#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/pdf_geometry.h"
#include "platform/pdf_library.h"

namespace quirn::platform {

class PDFImageUses {
 public:
  // Follows what the page's content draws, through forms, patterns and the appearances of annotations.
  void addPage(QPDFObjectHandle page);

  // The largest size, in points, at which any page shows the image; nothing for one that was not met. Where a
  // stranger's pages draw more than can be followed, no size is known.
  struct Extent {
    double width = 0;
    double height = 0;
  };
  std::optional<Extent> largest(QPDFObjectHandle image) const;

 private:
  struct Call {
    std::string name;
    PDFMatrix matrix;  // from the unit square or the form to the plane of the content
  };

  void addContent(const std::vector<Call>& calls, QPDFObjectHandle resources, const PDFMatrix& matrix);
  void addObject(QPDFObjectHandle object, QPDFObjectHandle outerResources, const PDFMatrix& matrix);
  void addPatterns(QPDFObjectHandle resources, const PDFMatrix& matrix);
  void addStream(QPDFObjectHandle stream, QPDFObjectHandle resources, const PDFMatrix& matrix);
  void addAppearances(QPDFObjectHandle page, double userUnit);
  void addAppearance(QPDFObjectHandle form, const PDFRectangle& rectangle, double userUnit);
  void addUse(QPDFObjectHandle image, const PDFMatrix& matrix);
  const std::vector<Call>& callsOf(QPDFObjectHandle stream);
  std::vector<Call> callsIn(std::string_view content);

  std::map<QPDFObjGen, std::vector<Call>> calls_;  // of forms and patterns
  std::map<QPDFObjGen, Extent> extents_;
  std::set<QPDFObjGen> active_;  // the streams that are being followed, one inside the other
  long steps_ = 0;
};

}  // namespace quirn::platform
