// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/staged_tree.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <array>
#include <cstdlib>

#include "platform/beneath.h"
#include "platform/hidden_name.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;
using platform::FileDescriptor;
using platform::OutputFolder;
using platform::StagedTree;

class StagedTrees : public testing::Test {
 protected:
  StagedTree stage() const { return StagedTree::create(open_); }
  const fs::path& folder() const { return files_.path(); }
  const TemporaryFolder& files() const { return files_; }

 private:
  TemporaryFolder files_;
  std::shared_ptr<const OutputFolder> open_ = std::make_shared<OutputFolder>(files_.path());
};

TEST_F(StagedTrees, AreSweptOnlyWhenNobodyMakesThemAnyMore) {
  const std::string abandoned = platform::hiddenName();
  files().file(abandoned + "/deep/down/a.txt", "left");
  fs::create_symlink("/", folder() / abandoned / "deep/root");
  files().file("elsewhere.txt", "stays");
  fs::create_symlink("elsewhere.txt", folder() / platform::hiddenName());
  StagedTree alive = stage();
  alive.createFile("a.txt");
  OutputFolder(folder()).sweepLeftovers();
  EXPECT_FALSE(fs::exists(folder() / abandoned));
  EXPECT_EQ(contentOf(folder() / "elsewhere.txt"), "stays");
  EXPECT_TRUE(alive.publishAs("alive"));
  EXPECT_TRUE(fs::exists(folder() / "alive/a.txt"));
}

TEST_F(StagedTrees, DoNotTakeANameThatIsTaken) {
  StagedTree tree = stage();
  files().folder("empty");
  files().file("file", "theirs");
  EXPECT_FALSE(tree.publishAs("empty"));
  EXPECT_FALSE(tree.publishAs("file"));
  EXPECT_TRUE(tree.publishAs("free"));
}

TEST_F(StagedTrees, StayInTheirFolderWhenItIsMoved) {
  const fs::path before = files().folder("before");
  StagedTree tree = StagedTree::create(std::make_shared<OutputFolder>(before));
  fs::rename(before, folder() / "after");
  tree.createFile("a/b.txt");
  EXPECT_TRUE(tree.publishAs("made"));
  EXPECT_TRUE(fs::exists(folder() / "after/made/a/b.txt"));
}

// From then on the kernel has no openat2, as old ones and some containers.
void forbidOpeningInOneStep() {
  std::array code{sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, 0),
                  sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat2, 0, 1),
                  sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
                  sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
  const sock_fprog program{static_cast<unsigned short>(code.size()), code.data()};
  if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) std::_Exit(3);
  if (::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0) std::_Exit(4);
}

int errorOfOpening(int folder, const std::string& name) {
  try {
    platform::openBeneath(folder, name, O_RDONLY);
    return 0;
  } catch (const std::system_error& error) {
    return error.code().value();
  }
}

// One letter for each name: opened, outside, or something else.
std::string openAll(const fs::path& folder) {
  const OutputFolder open(folder);
  std::string letters;
  for (const char* const name :
       {"a.txt", "d/b.txt", "d/../a.txt", "../in/a.txt", "/etc/passwd", "up/secret", "d/gone"}) {
    const int error = errorOfOpening(open.descriptor(), name);
    letters += error == 0 ? 'o' : error == EXDEV ? 'x' : '?';
  }
  return letters;
}

TEST_F(StagedTrees, OpenNothingOutsideWhereTheKernelCannotResolveBeneath) {
  files().file("secret", "own");
  files().file("in/a.txt", "a");
  files().file("in/d/b.txt", "b");
  fs::create_symlink("..", folder() / "in/up");
  EXPECT_EQ(openAll(folder() / "in"), "oooxxx?");
  EXPECT_EXIT(
      {
        forbidOpeningInOneStep();
        std::fputs(openAll(folder() / "in").c_str(), stderr);
        std::_Exit(0);
      },
      testing::ExitedWithCode(0), "^ooo[x?]x[x?][?]$");
}

}  // namespace
}  // namespace quirn::tests
