#include "zelbase/platform/posix/LibraryFile.h"

#include <elf.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace {

using zelbase::detail::IsWholeLibrary;

// A file of a header and these segments, padded with zeros to `size` bytes or cut to it.
struct FileOf {
  Elf64_Ehdr header{};
  std::vector<Elf64_Phdr> segments;
  std::size_t size = 0;

  FileOf() {
    std::memcpy(header.e_ident, ELFMAG, SELFMAG);
    header.e_ident[EI_CLASS] = ELFCLASS64;
    header.e_phentsize = sizeof(Elf64_Phdr);
    header.e_phoff = sizeof(Elf64_Ehdr);
  }

  void Add(std::uint32_t type, std::uint64_t offset, std::uint64_t fileSize) {
    Elf64_Phdr segment{};
    segment.p_type = type;
    segment.p_offset = offset;
    segment.p_filesz = fileSize;
    segments.push_back(segment);
    header.e_phnum = static_cast<std::uint16_t>(segments.size());
  }

  bool IsWhole() const {
    std::string content(reinterpret_cast<const char*>(&header), sizeof header);
    for (const Elf64_Phdr& segment : segments) content.append(reinterpret_cast<const char*>(&segment), sizeof segment);
    content.resize(size);
    const TemporaryFolder folder;
    return IsWholeLibrary(folder.Write("library.so", content));
  }
};

TEST(LibraryFile, IsWholeWithAllBytesOfItsSegments) {
  FileOf file;
  file.Add(PT_LOAD, 0, 500);
  file.Add(PT_LOAD, 400, 600);
  for (const std::size_t size : {1000u, 1001u, 5000u}) {
    file.size = size;
    EXPECT_TRUE(file.IsWhole()) << size;
  }
  for (const std::size_t size : {0u, 1u, 63u, 64u, 65u, 120u, 175u, 176u, 499u, 500u, 999u}) {
    file.size = size;
    EXPECT_FALSE(file.IsWhole()) << size;
  }
}

TEST(LibraryFile, OnlyWhatIsLoadedMustBeThere) {
  FileOf file;
  file.Add(PT_LOAD, 0, 500);
  file.Add(PT_NOTE, 5000, 600);
  file.Add(PT_LOAD, 1000, 0);  // nothing of it in the file
  file.size = 1000;
  EXPECT_TRUE(file.IsWhole());
}

TEST(LibraryFile, OffsetsAndSizesBeyondAllFilesAreNone) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
  for (const auto& [offset, size] : {std::pair{kMost, kMost},
                                     {kMost, std::uint64_t{1}},
                                     {std::uint64_t{1}, kMost},
                                     {kMost - 99, std::uint64_t{200}},
                                     {std::uint64_t{1} << 63, std::uint64_t{1} << 63}}) {
    FileOf file;
    file.Add(PT_LOAD, offset, size);
    file.size = 1000;
    EXPECT_FALSE(file.IsWhole()) << offset << " " << size;
  }
  for (const std::uint64_t table : {std::uint64_t{945}, std::uint64_t{1000}, kMost, kMost - 55}) {
    FileOf file;
    file.Add(PT_LOAD, 0, 500);
    file.header.e_phoff = table;
    file.size = 1000;
    EXPECT_FALSE(file.IsWhole()) << table;
  }
}

TEST(LibraryFile, AnotherKindOfFileIsNone) {
  FileOf file;
  file.Add(PT_LOAD, 0, 500);
  file.size = 1000;
  ASSERT_TRUE(file.IsWhole());
  FileOf narrow = file;
  narrow.header.e_ident[EI_CLASS] = ELFCLASS32;
  EXPECT_FALSE(narrow.IsWhole());
  FileOf unmarked = file;
  unmarked.header.e_ident[0] = 'M';
  EXPECT_FALSE(unmarked.IsWhole());
  FileOf otherTable = file;
  otherTable.header.e_phentsize = 32;
  EXPECT_FALSE(otherTable.IsWhole());
  EXPECT_FALSE(IsWholeLibrary("/a folder/a file that is not there"));
  EXPECT_FALSE(IsWholeLibrary(TemporaryFolder().Path()));
}

TEST(LibraryFile, TheProgramItselfIsWhole) { EXPECT_TRUE(IsWholeLibrary("/proc/self/exe")); }

}  // namespace
