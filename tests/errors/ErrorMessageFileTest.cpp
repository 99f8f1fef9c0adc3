#include "zelbase/errors/ErrorMessageFile.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/errors/FixedWording.h"
#include "tests/support/InChild.h"
#include "tests/support/LanguageFolder.h"
#include "zelbase/errors/DaxError.h"
#include "zelbase/errors/FileError.h"
#include "zelbase/errors/FileObjectError.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/platform/CFile.h"
#include "zelbase/platform/CFileException.h"
#include "zelbase/platform/FaultInjectionFiles.h"
#include "zelbase/units/Translator.h"

// The file, the wording it gives and the language of the Translator are those of the process: each test stands in a child.

namespace {

constexpr const char* kWordings =
    "[File Error]\nOpen = Cannot open %s\nRead =\n"
    "[FileError]\nType = File trouble\n"
    "[FileObject Error]\nType = Settings trouble\nSectionNotFound = No %s in %s\nKeyNotFound = No %s in %s of %s\n"
    "[Dax Error]\nType = Data trouble\nInterpolate = Between: %s\n";

std::string WordingOf(const std::string& section, const std::string& key) {
  std::string text = "untouched";
  return ErrorMessageFile::Get().Get(section, key, text) ? text : "(none)" + text;
}

std::string OpenFormat() { return FileError("C:\\a\\b.txt", FileError::Open).Format(); }

const char* const kBuiltIn = "Error opening \"b.txt\".";

class Calling : public ErrorReporterBase {
 public:
  explicit Calling(std::function<void(const Error&)> function) : m_function(std::move(function)) {
    GlobalErrorList::Get().AddReporter(this);
  }
  ~Calling() { GlobalErrorList::Get().RemoveReporter(this); }
  Calling(const Calling&) = delete;
  Calling& operator=(const Calling&) = delete;
  void Report(const Error& error) override { m_function(error); }

 private:
  std::function<void(const Error&)> m_function;
};

TEST(ErrorMessageFile, WithoutAnOpenFileNothingIsFound) {
  ExpectInChild([] {
    const LanguageFolder computer;
    EXPECT_FALSE(ErrorMessageFile::Get().IsOpen());
    EXPECT_EQ(WordingOf("File Error", "Open"), "(none)untouched");
    EXPECT_EQ(OpenFormat(), kBuiltIn);
    EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
  });
}

TEST(ErrorMessageFile, IsOneObject) {
  ExpectInChild([] { EXPECT_EQ(&ErrorMessageFile::Get(), &ErrorMessageFile::Get()); });
}

TEST(ErrorMessageFile, OpenFileWordsTheErrors) {
  ExpectInChild([] {
    const LanguageFolder computer;
    EXPECT_TRUE(ErrorMessageFile::Get().Open(computer.Folder().Write("ErrorMessages.ini", kWordings)));
    EXPECT_TRUE(ErrorMessageFile::Get().IsOpen());
    EXPECT_EQ(WordingOf("File Error", "Open"), "Cannot open %s");
    EXPECT_EQ(OpenFormat(), "Cannot open b.txt");
    EXPECT_EQ(FileError("b", FileError::Read).Format(), "");  // found, though empty
    EXPECT_EQ(FileError("b", FileError::Write).Format(), "Error writing to \"b\".");
    EXPECT_EQ(FileError("b", FileError::Open).Type(), "File trouble");
    EXPECT_EQ(FileObjectError("d\\f", "S", FileObjectError::SectionNotFound).Format(), "No S in f");
    EXPECT_EQ(FileObjectError("d\\f", "S", "K", FileObjectError::KeyNotFound).Format(), "No K in S of f");
    EXPECT_EQ(FileObjectError("d\\f", "S", FileObjectError::SectionNotFound).Type(), "Settings trouble");
    EXPECT_EQ(DaxError("Heading", DaxError::Interpolate, "f", true, 0.0).Format(), "Between: Heading");
    EXPECT_EQ(DaxError("Heading", DaxError::Read, "f", true, 0.0).Type(), "Data trouble");
  });
}

TEST(ErrorMessageFile, MissesLeaveTheTextAlone) {
  ExpectInChild([] {
    const LanguageFolder computer;
    ErrorMessageFile::Get().Open(computer.Folder().Write("ErrorMessages.ini", kWordings));
    EXPECT_EQ(WordingOf("File Error", "Write"), "(none)untouched");
    EXPECT_EQ(WordingOf("Nothing", "Open"), "(none)untouched");
    EXPECT_EQ(WordingOf("file error", "Open"), "(none)untouched");
    EXPECT_EQ(WordingOf("File Error", "Read"), "");
    EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);  // a look-up does not report
  });
}

TEST(ErrorMessageFile, WordingsAreOfAnyLengthAndWithAnyPercents) {
  ExpectInChild([] {
    const LanguageFolder computer;
    const std::string longText(100000, 'w');
    ErrorMessageFile::Get().Open(
        computer.Folder().Write("e.ini", "[File Error]\nOpen = %n%d%s%s%s%%%\nRead = " + longText + "%s\nWrite = no place\n"));
    EXPECT_EQ(OpenFormat(), "%n%db.txt%%");
    EXPECT_EQ(FileError("f", FileError::Read).Format(), longText + "f");
    EXPECT_EQ(FileError("f", FileError::Write).Format(), "no place");
  });
}

// --- Opening that fails ---------------------------------------------------------------------------------------------

TEST(ErrorMessageFile, MissingFileEntersOneErrorUnderGeneral) {
  ExpectInChild([] {
    const LanguageFolder computer;
    GlobalErrorList& list = GlobalErrorList::Get();
    list.SetContext("Another");
    EXPECT_FALSE(ErrorMessageFile::Get().Open("C:\\nowhere\\ErrorMessages.ini"));
    EXPECT_FALSE(ErrorMessageFile::Get().IsOpen());
    EXPECT_EQ(list.NumErrors(true), 1);
    EXPECT_EQ(list.CurrentContext(), "General");
    EXPECT_EQ(list[0].Format(), "Error opening \"ErrorMessages.ini\".");
    EXPECT_EQ(list[0].Details(), "C:\\nowhere\\ErrorMessages.ini");
  });
}

TEST(ErrorMessageFile, EmptyNameEntersNone) {
  ExpectInChild([] {
    const LanguageFolder computer;
    EXPECT_FALSE(ErrorMessageFile::Get().Open(""));
    EXPECT_FALSE(ErrorMessageFile::Get().IsOpen());
    EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
  });
}

TEST(ErrorMessageFile, OpeningThatFailsClosesWhatWasOpen) {
  for (const char* const name : {"", "C:\\nowhere\\ErrorMessages.ini"}) {
    ExpectInChild([name] {
      const LanguageFolder computer;
      ErrorMessageFile::Get().Open(computer.Folder().Write("ErrorMessages.ini", kWordings));
      EXPECT_FALSE(ErrorMessageFile::Get().Open(name));
      EXPECT_FALSE(ErrorMessageFile::Get().IsOpen());
      EXPECT_EQ(WordingOf("File Error", "Open"), "(none)untouched");
      EXPECT_EQ(OpenFormat(), kBuiltIn);
    });
  }
}

TEST(ErrorMessageFile, AnotherFileTakesThePlaceOfTheFirst) {
  ExpectInChild([] {
    const LanguageFolder computer;
    ErrorMessageFile::Get().Open(computer.Folder().Write("a.ini", kWordings));
    EXPECT_TRUE(ErrorMessageFile::Get().Open(computer.Folder().Write("b.ini", "[File Error]\nRead = Cannot read %s\n")));
    EXPECT_EQ(OpenFormat(), kBuiltIn);
    EXPECT_EQ(FileError("f", FileError::Read).Format(), "Cannot read f");
  });
}

TEST(ErrorMessageFile, OpensWithOthersDeniedWriting) {
  ExpectInChild([] {
    const LanguageFolder computer;
    const std::string name = computer.Folder().Write("a.ini", kWordings);
    const CFile writer(name.c_str(), CFile::modeReadWrite | CFile::shareDenyNone);
    EXPECT_FALSE(ErrorMessageFile::Get().Open(name));
    EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 1);
  });
}

TEST(ErrorMessageFile, ReadThatFailsMidwayThrowsAndLeavesNothingOpen) {
  ExpectInChild([] {
    const LanguageFolder computer;
    const std::string name = computer.Folder().Write("a.ini", kWordings);
    ErrorMessageFile::Get().Open(name);
    FaultInjectionFiles files;
    files.FailAt(FileOperation::Read, 1);
    const PlatformOverride<PlatformFiles> guard(files);
    EXPECT_THROW(ErrorMessageFile::Get().Open(name), CFileException);
    EXPECT_FALSE(ErrorMessageFile::Get().IsOpen());
    EXPECT_EQ(OpenFormat(), kBuiltIn);
    EXPECT_TRUE(ErrorMessageFile::Get().Open(name));
  });
}

TEST(ErrorMessageFile, FilesOfAnyContentOpen) {
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) everyByte += static_cast<char>(byte);
  for (const std::string& content : {std::string(), everyByte, std::string(1 << 20, '['), std::string("[File Error]\nOpen\n=\n"),
                                     std::string("[File Error]\n") + std::string(1 << 20, '=')}) {
    ExpectInChild([&content] {
      const LanguageFolder computer;
      EXPECT_TRUE(ErrorMessageFile::Get().Open(computer.Folder().Write("a.ini", content)));
      EXPECT_TRUE(ErrorMessageFile::Get().IsOpen());
      EXPECT_EQ(OpenFormat(), kBuiltIn);
      EXPECT_EQ(GlobalErrorList::Get().NumErrors(true), 0);
    });
  }
}

// --- Who else words -------------------------------------------------------------------------------------------------

TEST(ErrorMessageFile, OpeningPutsItBehindTheDoorAndAFailureDoesNot) {
  ExpectInChild([] {
    const LanguageFolder computer;
    const WordingGuard own({{{"File Error", "Open"}, "the host's"}});
    EXPECT_FALSE(ErrorMessageFile::Get().Open(""));
    EXPECT_EQ(OpenFormat(), "the host's");
    EXPECT_TRUE(ErrorMessageFile::Get().Open(computer.Folder().Write("ErrorMessages.ini", kWordings)));
    EXPECT_EQ(OpenFormat(), "Cannot open b.txt");
  });
}

TEST(ErrorMessageFile, ReporterFormatsWhileOpeningReports) {
  ExpectInChild([] {
    const LanguageFolder computer;
    ErrorMessageFile::Get().Open(computer.Folder().Write("ErrorMessages.ini", kWordings));
    std::vector<std::string> heard;
    const Calling reporter([&heard](const Error& error) { heard.push_back(error.Type() + ": " + error.Format()); });
    EXPECT_FALSE(ErrorMessageFile::Get().Open("C:\\nowhere\\b.txt"));
    // Nothing is open by then, so that the built-in texts serve.
    EXPECT_EQ(heard, (std::vector<std::string>{std::string("File IO Error: ") + kBuiltIn}));
  });
}

TEST(ErrorMessageFile, ReporterMayWaitForAThreadThatFormats) {
  ExpectInChild([] {
    const LanguageFolder computer;
    std::string formatted;
    const Calling reporter([&formatted](const Error&) { std::thread([&] { formatted = OpenFormat(); }).join(); });
    EXPECT_FALSE(ErrorMessageFile::Get().Open("C:\\nowhere\\b.txt"));
    EXPECT_EQ(formatted, kBuiltIn);
  });
}

TEST(ErrorMessageFile, ReporterMayOpenAFile) {
  ExpectInChild([] {
    const LanguageFolder computer;
    const std::string name = computer.Folder().Write("ErrorMessages.ini", kWordings);
    const Calling reporter([&name](const Error&) { EXPECT_TRUE(ErrorMessageFile::Get().Open(name)); });
    EXPECT_FALSE(ErrorMessageFile::Get().Open("C:\\nowhere\\b.txt"));
    EXPECT_TRUE(ErrorMessageFile::Get().IsOpen());
    EXPECT_EQ(OpenFormat(), "Cannot open b.txt");
  });
}

// --- The Translator -------------------------------------------------------------------------------------------------

constexpr const char* kDutch = "[Language]\nLanguage = 0413\n";

class CountingLogger : public AbstractZELMessage {
 public:
  void ShowMessage(int, const std::string& text, int, const std::string&, int) override { texts.push_back(text); }
  std::vector<std::string> texts;
};

TEST(ErrorMessageFile, InactiveTranslatorIsNotAsked) {
  ExpectInChild([] {
    const LanguageFolder computer("[Language]\nLanguage = 0409\n");
    ErrorMessageFile::Get().Open(computer.Folder().Write("ErrorMessages.ini", kWordings));
    Translator& translator = Translator::Instance();
    translator.GetTranslatorIni().SetItem("ErrorMessages.ini", "File Error.Open", "Kan niet openen: %s");
    CountingLogger logger;
    translator.SetZELMessageLogger(&logger);
    EXPECT_EQ(OpenFormat(), "Cannot open b.txt");
    EXPECT_EQ(FileError("f", FileError::Open).Type(), "File trouble");
    EXPECT_TRUE(logger.texts.empty());
  });
}

TEST(ErrorMessageFile, ForeignLanguageReplacesTheWording) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    computer.WriteTranslations("0413", "[ErrorMessages.ini]\nFile Error.Open = Kan %s niet openen\nFile Error.Read = Kan niet lezen\n");
    EXPECT_EQ(OpenFormat(), kBuiltIn);  // no file, no translation
    ErrorMessageFile::Get().Open(computer.Folder().Write("ErrorMessages.ini", kWordings));
    EXPECT_EQ(OpenFormat(), "Kan b.txt niet openen");
    EXPECT_EQ(FileError("f", FileError::Read).Format(), "Kan niet lezen");  // for an empty wording, too
  });
}

TEST(ErrorMessageFile, WithoutATranslationTheFilesWordingStays) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    computer.WriteTranslations("0413", "[ErrorMessages.ini]\nFile Error.Open =\n");
    ErrorMessageFile::Get().Open(computer.Folder().Write("ErrorMessages.ini", kWordings));
    CountingLogger logger;
    Translator::Instance().SetZELMessageLogger(&logger);
    EXPECT_EQ(OpenFormat(), "Cannot open b.txt");
    EXPECT_EQ(FileError("f", FileError::Open).Type(), "File trouble");
    EXPECT_EQ(logger.texts,
              (std::vector<std::string>{"Translation for key (File Error.Open) in section (ErrorMessages.ini) is empty!",
                                        "Translation for key (FileError.Type) in section (ErrorMessages.ini) could not be found!"}));
  });
}

TEST(ErrorMessageFile, MissInTheFileIsAMissThoughTheTranslatorHasAText) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    computer.WriteTranslations("0413", "[ErrorMessages.ini]\nFile Error.Write = Kan niet schrijven\n");
    ErrorMessageFile::Get().Open(computer.Folder().Write("ErrorMessages.ini", kWordings));
    EXPECT_EQ(WordingOf("File Error", "Write"), "(none)untouched");
    EXPECT_EQ(FileError("f", FileError::Write).Format(), "Error writing to \"f\".");
  });
}

// --- Threads and the end --------------------------------------------------------------------------------------------

TEST(ErrorMessageFile, ErrorsFormatWhileFilesOpenAndFail) {
  ExpectInChild([] {
    const LanguageFolder computer(kDutch);
    computer.WriteTranslations("0413", "[ErrorMessages.ini]\nFile Error.Open = Kan %s niet openen\n");
    const std::string name = computer.Folder().Write("ErrorMessages.ini", kWordings);
    const Calling reporter([](const Error& error) { error.Format(); });
    std::atomic<int> odd{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&, i] {
        for (int round = 0; round < 50; ++round) {
          if (i == 0) ErrorMessageFile::Get().Open(round % 2 == 0 ? name : "C:\\nowhere\\x.ini");
          if (i == 1) FileError("x", FileError::Read).Report("reports");
          const std::string text = OpenFormat();
          if (text != kBuiltIn && text != "Kan b.txt niet openen") ++odd;
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(odd.load(), 0);
  });
}

struct LateUser {
  ~LateUser() {
    if (use && OpenFormat() != "Cannot open b.txt") std::abort();
  }
  bool use = false;
};

TEST(ErrorMessageFile, WordsErrorsWhileTheProcessEnds) {
  ExpectInChild(
      [] {
        static LateUser late;  // made before, and so destroyed after, the first use
        const LanguageFolder computer;
        ErrorMessageFile::Get().Open(computer.Folder().Write("ErrorMessages.ini", kWordings));
        late.use = OpenFormat() == "Cannot open b.txt";
        EXPECT_TRUE(late.use);
      },
      ChildProcess::Ending::Full);
}

}  // namespace
