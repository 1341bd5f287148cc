// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A picture as JPEG 2000.

#pragma once

#include <string>

#include "platform/base64.h"

namespace quirn::tests {

// Four by two pixels, (30 i, 255 - 30 i, 100) for i from 0 on, as OpenJPEG 2.5 writes them without loss.
inline std::string fourByTwoJPX() {
  return *platform::base64Decoded(
      "AAAADGpQICANCocKAAAAFGZ0eXBqcDIgAAAAAGpwMiAAAAAtanAyaAAAABZpaGRyAAAAAgAAAAQAAwcHAAAAAAAPY29scgEAAAAA"
      "ABAAAACpanAyY/9P/1EALwAAAAAABAAAAAIAAAAAAAAAAAAAAAQAAAACAAAAAAAAAAAAAwcBAQcBAQcBAf9SAAwAAAABAQAEBAAB"
      "/1wABEBA/2QAJQABQ3JlYXRlZCBieSBPcGVuSlBFRyB2ZXJzaW9uIDIuNS4w/5AACgAAAAAAMQAB/5PD5w4DkLvItSkp34BIB8lC"
      "USFsi2PG34BQBoDDXfeuc5gOv//Z",
      platform::Base64Alphabet::standard);
}

}  // namespace quirn::tests
