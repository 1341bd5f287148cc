// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/output_directory_store.h"

#include <stdlib.h>
#include <sys/stat.h>

#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;
using platform::Preferences;

TEST(OutputDirectoryStore, RemembersAFolderUntilItIsClearedOrGone) {
  TemporaryFolder folder;
  const fs::path file = folder / "config/quirn/test.conf";
  const OutputDirectoryStore store(Preferences::at(file));
  EXPECT_EQ(store.load(), std::nullopt);
  for (const std::string name : {"plain", "line\nbreak", "back\\slash\\n", " = blank ", "\xFF"}) {
    const fs::path chosen = folder.folder(name);
    EXPECT_TRUE(store.save(chosen));
    EXPECT_EQ(OutputDirectoryStore(Preferences::at(file)).load(), chosen) << name;
    EXPECT_EQ(namesIn(file.parent_path()), std::vector<std::string>{"test.conf"});
  }
  fs::remove(folder / "\xFF");
  EXPECT_EQ(store.load(), std::nullopt) << "outputs would go to a folder that is gone";
  store.save(folder.folder("again"));
  EXPECT_TRUE(store.clear());
  EXPECT_EQ(store.load(), std::nullopt);
}

TEST(OutputDirectoryStore, HasNoFolderWhereItsFileIsDamaged) {
  TemporaryFolder folder;
  const std::string key = "outputDirectoryBookmark";
  for (const std::string& content : {std::string(), std::string("\0\xFF\0\n", 4), key, key + "=", key + "=\\",
                                     key + "=/no/such/folder\n", std::string(100'000, '='), "\n\n=" + key}) {
    const OutputDirectoryStore store(Preferences::at(folder.file("damaged.conf", content)));
    EXPECT_EQ(store.load(), std::nullopt) << content.substr(0, 80);
    EXPECT_TRUE(store.save(folder.path())) << "the damage is for ever";
    EXPECT_EQ(store.load(), folder.path());
  }
}

TEST(OutputDirectoryStore, SaysThatItCouldNotRememberAndLeavesNothingBehind) {
  TemporaryFolder folder;
  folder.file("file", "content");
  folder.file("folder.conf/inside", "content");
  const auto before = snapshotOf(folder.path());
  for (const fs::path& unwritable :
       {folder / "file/below.conf", folder / "folder.conf", fs::path("/proc/quirn/test.conf")}) {
    const OutputDirectoryStore store(Preferences::at(unwritable));
    EXPECT_FALSE(store.save(folder.path())) << unwritable;
    EXPECT_EQ(store.load(), std::nullopt);
  }
  EXPECT_EQ(snapshotOf(folder.path()), before);
}

// Sets a variable of the environment, or takes it away, for as long as it lives.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* before = ::getenv(name)) before_ = before;
    set(value);
  }
  ~Variable() { set(before_ ? before_->c_str() : nullptr); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  void set(const char* value) { value == nullptr ? ::unsetenv(name_) : ::setenv(name_, value, 1); }
  const char* name_;
  std::optional<std::string> before_;
};

TEST(Preferences, StandInTheConfigurationFolder) {
  TemporaryFolder folder;
  const Variable home("HOME", folder.path().c_str());
  {
    const Variable chosen("XDG_CONFIG_HOME", (folder / "chosen").c_str());
    EXPECT_TRUE(Preferences("test").setValue("key", "value"));
  }
  EXPECT_EQ(contentOf(folder / "chosen/quirn/test.conf"), "key=value\n");
  const Variable relative("XDG_CONFIG_HOME", "relative");
  EXPECT_TRUE(Preferences("test").setValue("key", "value"));
  EXPECT_EQ(contentOf(folder / ".config/quirn/test.conf"), "key=value\n");
}

TEST(Preferences, AreNotKeptInTheWorkingFolderOfSomeoneWithoutAHome) {
  TemporaryFolder folder;
  const Variable home("HOME", nullptr);
  const Variable chosen("XDG_CONFIG_HOME", nullptr);
  const fs::path before = fs::current_path();
  fs::current_path(folder.path());
  EXPECT_FALSE(Preferences("test").setValue("key", "value"));
  EXPECT_EQ(Preferences("test").value("key"), std::nullopt);
  fs::current_path(before);
  EXPECT_TRUE(namesIn(folder.path()).empty());
}

TEST(Preferences, WhatIsNoFileHoldsNothingUp) {
  const TemporaryFolder folder;
  const fs::path pipe = folder.path() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(Preferences::at(pipe).value("key"), std::nullopt);
  EXPECT_EQ(platform::Preferences::at(folder.path()).value("key"), std::nullopt);
  EXPECT_FALSE(platform::Preferences::at(folder.path()).setValue("key", "value"));
  EXPECT_FALSE(platform::Preferences::at("/proc/quirn/quirn.conf").setValue("key", "value"));
}

}  // namespace
}  // namespace quirn::tests
