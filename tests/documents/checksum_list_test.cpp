// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/checksum_list.h"

#include "core/input_file.h"

namespace quirn::tests {
namespace {

const std::string md5 = "d41d8cd98f00b204e9800998ecf8427e";
const std::string sha1 = "da39a3ee5e6b4b0d3255bfef95601890afd80709";
const std::string sha256 = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";

struct Row {
  const char* loss;
  std::string text;
  std::vector<std::string> names;
};

std::vector<std::string> namesOf(std::string_view text) {
  std::vector<std::string> names;
  for (const ChecksumEntry& entry : parseChecksumList(text)) names.push_back(entry.name);
  return names;
}

TEST(ChecksumList, FindsTheEntries) {
  const std::string upper = "D41D8CD98F00B204E9800998ECF8427E";
  const std::vector<Row> rows{
      {"the GNU form is not read", md5 + "  a.txt\n", {"a.txt"}},
      {"a list without a last line end loses its last file", md5 + "  a\n" + sha1 + "  b", {"a", "b"}},
      {"the binary mark becomes part of the name", md5 + " *empty.bin", {"empty.bin"}},
      {"the second of two marks is taken for one", md5 + " **star", {"*star"}},
      {"a blank in a name ends it", md5 + "  a b  c.txt", {"a b  c.txt"}},
      {"one blank does not part hash and name", md5 + " a.txt", {"a.txt"}},
      {"indented lines are lost", "  \t" + md5 + "  a.txt \t", {"a.txt"}},
      {"upper-case digests are lost", upper + "  a.txt", {"a.txt"}},
      {"Windows line ends become part of the name", md5 + "  a\r\n" + md5 + "  b\r\n", {"a", "b"}},
      {"a byte order mark costs the first file", "\xEF\xBB\xBF" + md5 + "  a", {"a"}},
      {"comments are files", "# " + md5 + "  a\n\n   \n;\n" + md5 + "  b", {"b"}},
      {"a name in an escaped line is not unescaped", "\\" + md5 + "  a\\nb\\\\c\\r", {"a\nb\\c\r"}},
      {"a backslash in a plain line is unescaped", md5 + "  a\\nb", {"a\\nb"}},
      {"a cut escape reads on", "\\" + md5 + "  a\\", {"a\\"}},
      {"the BSD form is not read", "MD5 (a b.txt) = " + md5, {"a b.txt"}},
      {"brackets in a name end it", "SHA256 (a (1).txt) = " + sha256, {"a (1).txt"}},
      {"an equals sign in a name ends it", "SHA1 (a=b) = " + sha1, {"a=b"}},
      {"the blanks of the BSD form are required", "MD5( a )=" + md5, {"a"}},
      {"an unknown algorithm word hides a good digest", "Whirl (a) = " + md5, {"a"}},
      {"an escaped BSD line names another file", "\\MD5 (a\\nb) = " + md5, {"a\nb"}},
      {"a folder in a name is lost", md5 + "  sub/../a", {"sub/../a"}},
      {"a name that is not UTF-8 is lost", md5 + "  \xFF", {"\xFF"}},
  };
  for (const Row& row : rows) EXPECT_EQ(namesOf(row.text), row.names) << row.loss;
}

TEST(ChecksumList, PassesOverWhatIsNoEntry) {
  for (const std::string& line :
       {std::string(), std::string("\\"), std::string("\\ a"), std::string("hello world"), md5, md5 + " ", md5 + "  *",
        md5 + "\ta", md5.substr(1) + "  a", md5 + "0  a", sha256.substr(0, 48) + "  a", "g" + md5.substr(1) + "  a",
        "MD5 () = " + md5, "MD5 (a) = " + md5.substr(1), "MD5 (a) " + md5, std::string("(a) = 12 (b) = "),
        // The three marks make it the BSD form, and no hash stands behind the last.
        md5 + "  (a)=b", std::string(1000, '('), std::string("\xEF\xBB")}) {
    EXPECT_EQ(namesOf(line), std::vector<std::string>{}) << line;
  }
  EXPECT_EQ(namesOf(md5 + "  )a(=b"), std::vector<std::string>{")a(=b"}) << "not in BSD order";
}

TEST(ChecksumList, KeepsTheDigestAsItIsWritten) {
  const std::string sha512 = upperCased(sha256 + sha256);
  EXPECT_EQ(parseChecksumList(sha512 + "  a").at(0).hash, sha512);
  EXPECT_EQ(parseChecksumList("\\" + md5 + "  a").at(0).hash, md5);
  EXPECT_EQ(parseChecksumList("SHA1 (a) =   " + sha1).at(0).hash, sha1);
}

TEST(ChecksumLine, IsReadBackAsTheSameName) {
  for (const std::string name : {"a.txt", "a b", "back\\slash", "line\nbreak \\n", "c\rr", "\xFF"})
    EXPECT_EQ(namesOf(checksumLine(md5, name)), std::vector<std::string>{name});
  EXPECT_EQ(checksumLine(md5, "a b"), md5 + "  a b\n");
}

}  // namespace
}  // namespace quirn::tests
