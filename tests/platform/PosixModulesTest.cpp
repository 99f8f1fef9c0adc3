#include "zelbase/platform/posix/PosixModules.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using zelbase::detail::LibraryFileName;
using zelbase::detail::ProgramFileName;

struct NameRow {
  const char* name;
  const char* expected;
};

TEST(PosixModules, ProgramsWithoutAnExtensionGetOne) {
  for (const NameRow& row : {NameRow{"zel", "zel.exe"}, NameRow{"survey.bin", "survey.bin"}, NameRow{"a.exe", "a.exe"},
                             NameRow{".hidden", ".hidden.exe"}, NameRow{"zel-4.1", "zel-4.1"}, NameRow{"x.", "x."}, NameRow{"", ""}}) {
    EXPECT_EQ(ProgramFileName(row.name), row.expected) << row.name;
  }
}

TEST(PosixModules, LibrariesGetTheSuitesNames) {
  for (const NameRow& row : {NameRow{"libZelBase.so", "ZelBaseR.dll"}, NameRow{"libZelBase.so.4", "ZelBaseR.dll"},
                             NameRow{"libName.so.4.1", "NameR.dll"}, NameRow{"libx.so", "xR.dll"}, NameRow{"libliblib.so", "liblibR.dll"},
                             NameRow{"libx.source.so.1", "x.sourceR.dll"}, NameRow{"libx-2.31.so", "x-2.31R.dll"}}) {
    EXPECT_EQ(LibraryFileName(row.name), row.expected) << row.name;
  }
}

TEST(PosixModules, NamesTooShortOrOfAnotherFormStay) {
  for (const char* const name :
       {"lib.so", "lib.so.4", "lib", "li", "", ".so", "libx", "libx.sox", "ZelBaseR.dll", "plugin.so", "ld-linux-x86-64.so.2"}) {
    EXPECT_EQ(LibraryFileName(name), name);
  }
}

}  // namespace
