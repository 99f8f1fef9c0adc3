// What keeps its data in memory, with the memory running out at each request in turn: archives, buffers, trees, tables and lists.
// Neighbours: SettingsFaultTest.cpp and StreamFaultTest.cpp, for what goes through files.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <memory>
#include <new>
#include <string>

#include "tests/data/ArchiveBytes.h"
#include "tests/faults/FaultRuns.h"
#include "tests/support/Effort.h"
#include "tests/support/InChild.h"
#include "tests/support/LanguageFolder.h"
#include "zelbase/colour/ColorTable.h"
#include "zelbase/data/CCF_DataInfo.h"
#include "zelbase/data/CCF_DispInfo.h"
#include "zelbase/errors/FileError.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/files/CharBuffer.h"
#include "zelbase/files/FixedPacker.h"
#include "zelbase/sonar/TideFile.h"
#include "zelbase/units/HelpProvider.h"
#include "zelbase/units/Translator.h"
#include "zelbase/xml/XmlReader.h"

namespace {

class MemoryFaults : public FaultFixture {
 protected:
  const std::string m_long = std::string(100, 'x');
};

TEST_F(MemoryFaults, ArchivesOfTexts) {
  FaultCase<CCF_DispInfo> what;
  what.make = [&] {
    auto info = std::make_unique<CCF_DispInfo>();
    info->SetGroup(m_long + "g\n");
    info->SetType(m_long + "t\n");
    info->SetName(m_long + "n\n");
    return info;
  };
  what.run = [](CCF_DispInfo& info) {
    CCF_DispInfo back;
    LoadBytes(back, StoredBytes(info, 16), 16);
    return back.GetName() + "\n" == info.GetName();
  };
  what.picture = [](CCF_DispInfo& info) { return info.GetGroup() + info.GetType() + info.GetName(); };
  what.strong = true;
  RunMemory(std::move(what), 20);
}

TEST_F(MemoryFaults, ArchivesOfIdentifiers) {
  FaultCase<CCF_DataInfo> what;
  what.make = [] {
    auto payload = std::make_unique<CCF_DataInfo>();
    payload->SetDataInfo(CDataInfo(CDataId(5, 1002, 3, 1), 7, 9));
    return payload;
  };
  what.run = [](CCF_DataInfo& payload) {
    CCF_DataInfo back;
    LoadBytes(back, StoredBytes(payload));
    return back.GetDataInfo().GetDataId() == payload.GetDataInfo().GetDataId();
  };
  what.picture = [](CCF_DataInfo& payload) { return payload.GetDataInfo().GetDataId().GetKey(); };
  what.strong = true;
  RunMemory(std::move(what), 5);
}

TEST_F(MemoryFaults, Trees) {
  struct Pair {
    XmlElement source;
    XmlElement copy;
  };
  FaultCase<Pair> what;
  what.make = [&] {
    auto pair = std::make_unique<Pair>();
    const std::string text = "<a n=\"" + m_long + "\"><b>" + m_long + "</b><c d=\"1\"><e>" + m_long + "</e></c></a>";
    XmlReader(pair->source).ReadData(text.data(), static_cast<unsigned int>(text.size()));
    pair->copy.SetName("former");
    return pair;
  };
  what.run = [](Pair& pair) {
    const XmlElement copy(pair.source);
    pair.copy = copy;
    return true;
  };
  what.picture = [](Pair& pair) { return pair.source.Name() + (pair.copy == pair.source ? "=" : pair.copy.Name()); };
  what.afterFailure = [](Pair& pair, RunEnd, const std::string&) { EXPECT_EQ(pair.copy.Name(), "former"); };
  RunMemory(std::move(what), 10);
}

TEST_F(MemoryFaults, ReadingATreeLeavesItEmpty) {
  struct Document {
    XmlElement root;
    XmlReader reader{root};
  };
  FaultCase<Document> what;
  what.make = [] {
    auto document = std::make_unique<Document>();
    document->root.SetName("former");
    return document;
  };
  what.run = [&](Document& document) {
    const std::string text =
        "<?x?><a n=\"&amp;" + m_long + "\" n=\"2\"><b>" + m_long + "&lt;</b>" + m_long + "<c d=\"1\"><e>" + m_long + "</e></c></a>";
    return document.reader.ReadData(text.data(), static_cast<unsigned int>(text.size()));
  };
  what.picture = [](Document& document) { return document.root.Name() + (document.root.HasAttributes() ? "+" : "0"); };
  what.afterFailure = [](Document& document, RunEnd, const std::string& before) {
    // Before the reading has begun, where the text is put together, or after.
    EXPECT_TRUE(document.root == XmlElement() || before == document.root.Name() + "0");
  };
  RunMemory(std::move(what), 15);
}

TEST_F(MemoryFaults, ColourTables) {
  struct Pair {
    ColorTable source;
    ColorTable copy;
  };
  FaultCase<Pair> what;
  what.make = [&] {
    auto pair = std::make_unique<Pair>();
    for (int i = 0; i < 6; ++i) pair->source.AddEntry(i, static_cast<COLORREF>(i), false, m_long);
    return pair;
  };
  what.run = [](Pair& pair) {
    const ColorTable copy(pair.source);
    pair.copy = copy;
    return pair.copy.NumEntries() == pair.source.NumEntries();
  };
  what.picture = [](Pair& pair) {
    std::string text;
    for (const ColorTable* const table : {&pair.source, &pair.copy}) {
      for (int i = 0; i < table->NumEntries(); ++i) {
        text += std::to_string(table->EntryColor(i)) + (table->EntryLocked(i) ? "!" : "") + table->EntryName(i) + " ";
      }
      text += "/";
    }
    return text;
  };
  what.strong = true;
  RunMemory(std::move(what), 5);
}

// An entry is in all its lists or in none.
TEST_F(MemoryFaults, EntriesOfColourTables) {
  FaultCase<ColorTable> what;
  what.run = [&](ColorTable& table) {
    for (int i = table.NumEntries(); i < 40; ++i) {
      if (!table.AddEntry(i, static_cast<COLORREF>(i), true, std::to_string(i))) return false;
    }
    return true;
  };
  what.picture = [](ColorTable& table) {
    std::string text;
    for (int i = 0; i < table.NumEntries(); ++i) {
      EXPECT_EQ(table.EntryColor(i), static_cast<COLORREF>(i));
      EXPECT_TRUE(table.EntryLocked(i));
      text += table.EntryName(i) + " ";
    }
    return text;
  };
  RunMemory(std::move(what), 5);
}

TEST_F(MemoryFaults, TideSeries) {
  struct Pair {
    TideFile source;
    TideFile copy;
  };
  FaultCase<Pair> what;
  what.make = [&] {
    auto pair = std::make_unique<Pair>();
    for (int i = 0; i < 3000; ++i) pair->source.AddTideValue(i, i);
    return pair;
  };
  what.run = [](Pair& pair) {
    // In the middle and at the ends, and once more what is there.
    for (const double time : {1500.5, -1.0, 3000.0, 7.0, 1500.25}) {
      if (!pair.source.AddTideValue(time, 1.0)) return false;
    }
    pair.copy = pair.source;
    return pair.copy.GetNumValues() == pair.source.GetNumValues();
  };
  what.picture = [](Pair& pair) {
    std::string text = std::to_string(pair.copy.GetNumValues());
    double last = -1e300;
    double time = 0.0;
    double value = 0.0;
    int count = 0;
    for (bool more = pair.source.GetFirstTideValue(time, value); more; more = pair.source.GetNextTideValue(time, value)) {
      EXPECT_GT(time, last);
      last = time;
      ++count;
    }
    EXPECT_EQ(count, pair.source.GetNumValues());
    return text + "," + std::to_string(count);
  };
  RunMemory(std::move(what), 2);
}

TEST_F(MemoryFaults, Lines) {
  FaultCase<FixedPacker> what;
  what.make = [&] {
    auto packer = std::make_unique<FixedPacker>();
    packer->LoadString(m_long);
    return packer;
  };
  what.run = [&](FixedPacker& packer) { return packer.SetItem(150, 100, m_long) && packer.SetLabeledItem(300, 80, m_long, m_long); };
  what.picture = [](FixedPacker& packer) { return packer.GetString(); };
  what.afterFailure = [&](FixedPacker& packer, RunEnd, const std::string&) { EXPECT_EQ(packer.GetString().substr(0, 100), m_long); };
  RunMemory(std::move(what), 2);
}

TEST_F(MemoryFaults, ReportedErrors) {
  FaultCase<int> what;
  what.run = [](int&) {
    FileError("a file with a name that is too long for a short string", FileError::Open)
        .Report("a context with a name that is too long for a short string");
    return GlobalErrorList::Get().NumErrors(true) == 1;
  };
  what.make = [] {
    GlobalErrorList::Get().Clear();
    return std::make_unique<int>(0);
  };
  what.picture = [](int&) {
    const GlobalErrorList& errors = GlobalErrorList::Get();
    return std::to_string(errors.NumErrors(true)) + (errors.NumErrors(false) == 1 ? errors[0].Format() : "");
  };
  what.afterFailure = [](int&, RunEnd, const std::string&) {
    EXPECT_LE(GlobalErrorList::Get().NumErrors(true), 1);
    GlobalErrorList::Get().Clear();
    EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
  };
  FaultRuns<int> runs(m_folder, std::move(what));
  runs.KeepsMemory();
  runs.MemoryOnly();
  EXPECT_GE(runs.Faults(), 4u);
}

// The first use of what reads its files then: it may fail without memory, and the next use is then the first.
template <class Use>
void TryFirstUse(Use use, unsigned long long least) {
  unsigned long long n = 1;
  for (bool clean = false; !clean; ++n) {
    const ChildProcess::Ending ending = ChildProcess::Ending::Quick;
    ChildProcess child(
        [&] {
          unsigned long long faults = 0;
          {
            AllocationFaults memory;
            memory.FailAt(n);
            try {
              use();
            } catch (const std::bad_alloc&) {
            }
            faults = memory.FaultsGiven();
          }
          return use() ? (faults > 0 ? 1 : 0) : 2;
        },
        ending);
    const int code = child.Wait();
    ASSERT_TRUE(code == 0 || code == 1) << n << ": " << code << child.ErrorText();
    clean = code == 0;
  }
  EXPECT_GE(n, least);
}

TEST_F(MemoryFaults, TheFirstUseOfTheTranslator) {
  const LanguageFolder language("[Language]\nLanguage = 0413\n");
  language.WriteTranslations("0413", "[Units.uni]\nLength.Metre=een meter die langer is dan een korte tekst\n");
  TryFirstUse(
      [] {
        return Translator::Instance().IsLanguageForeign() &&
               Translator::Instance().GetUnitsString("Length", "Metre") == "een meter die langer is dan een korte tekst";
      },
      10);
}

TEST_F(MemoryFaults, TheFirstUseOfTheHelp) {
  TryFirstUse([] { return &HelpProvider::GetInstance() == &HelpProvider::GetInstance(); }, 3);
}

TEST_F(MemoryFaults, TheFirstUseOfTheErrors) {
  TryFirstUse(
      [] {
        FileError("a file with a name that is too long for a short string", FileError::Open).Report("");
        return GlobalErrorList::Get().NumErrors(true) > 0;
      },
      4);
}

// A buffer takes its array from the system's own store, which is limited for real. A sanitizer's store bears neither the limit nor
// arrays of this size.
#ifndef ZELBASE_TESTS_IN_SANITIZER
TEST_F(MemoryFaults, ABufferThatCannotGrowStaysAsItWas) {
  ExpectInChild([] {
    CharBuffer buffer;
    buffer.Write("abcdef", 6);
    buffer.SetPos(2);
    struct rlimit limit {};
    ASSERT_EQ(::getrlimit(RLIMIT_AS, &limit), 0);
    limit.rlim_cur = rlim_t{1} << 30;
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &limit), 0);
    EXPECT_THROW(buffer.SetPos(2000000000), std::bad_alloc);
    EXPECT_THROW(buffer.GetBuffer(2000000000), std::bad_alloc);
    EXPECT_EQ(buffer.GetPos(), 2);
    EXPECT_EQ(buffer.Size(), 6);
    buffer.Write("x", 1);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(buffer.Begin()), 6), "abxdef");
  });
}

TEST_F(MemoryFaults, ABufferOfTheLargestSizeGrowsNoMore) {
  // The array is of zeros that nobody has touched, and costs nothing.
  CharBuffer buffer;
  buffer.SetPos(2147483646);
  buffer.SetPos(2147483647);
  buffer.SetPos(2147483646);
  buffer.Write("x", 1);
  EXPECT_EQ(buffer.GetPos(), 2147483647);
  EXPECT_EQ(buffer.Size(), 2147483647);
  buffer.Write("y", 1);
  EXPECT_EQ(buffer.Size(), 2147483647);
  EXPECT_EQ(*buffer.GetOffsetBuffer(2147483646), 'x');
  buffer.SetPos(5);
  buffer.Write("z", 1);
  EXPECT_EQ(*buffer.GetOffsetBuffer(5), 'z');
}
#endif

}  // namespace
