#include "XyzCommand.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>

#include "OutputFile.h"
#include "PageText.h"
#include "ProgressBar.h"
#include "SettingsFile.h"
#include "TextEdge.h"
#include "UtcText.h"
#include "adapters/xyz/XyzTextSource.h"
#include "zelbase/data/XyzImporter.h"

namespace zel {
namespace {

constexpr long long kLook = 4096;        // points from look to look at the clock and at Ctrl-C
constexpr std::size_t kBlock = 1 << 20;  // bytes from write to write

struct Arguments {
  std::string file;
  std::string output;
  std::string page;
  double low = -HUGE_VAL, high = HUGE_VAL;
  double shift = 0.0;
  int every = 1;
  bool positionOnly = false;
};

// ---- what the commands share ----

bool Open(const Arguments& arguments, XyzTextSource& source) {
  if (source.Open(ToSuitePath(arguments.file))) return true;
  Fail("cannot open \"" + arguments.file + "\"");
  return false;
}

// Tells lines that were skipped. True when there are none and the file could be read to its end.
bool CheckReading(const XyzTextSource& source, const XyzTextSummary& summary, const Arguments& arguments) {
  for (const XyzLineProblem& problem : summary.problems) {
    Fail(arguments.file + ":" + std::to_string(problem.line) + ": " + ToTerminal(problem.reason, DetectEncoding(problem.reason)));
  }
  const long long kept = static_cast<long long>(summary.problems.size());
  if (summary.brokenLines > kept) Fail(arguments.file + ": and " + std::to_string(summary.brokenLines - kept) + " more such lines");
  if (source.Result() != FileResult::Ok) Fail("\"" + arguments.file + "\" could not be read to its end");
  return summary.brokenLines == 0 && source.Result() == FileResult::Ok;
}

// ---- count, bounds ----

// A look at all points, for its counts and extents.
class Look : public XyzImporter {
 public:
  explicit Look(XYZDataSource& source) : XyzImporter(&source, false), m_bar("reading") {}

  // The bar is gone before anything is said.
  bool Process() override {
    const bool done = XyzImporter::Process();
    m_bar.Clear();
    return done;
  }

  bool HasTimes() const { return m_firstTime <= m_lastTime; }
  double FirstTime() const { return m_firstTime; }
  double LastTime() const { return m_lastTime; }

 protected:
  bool AddPoint(const TimePoint& point) override {
    NoteTime(point.time);
    if (++m_count % kLook != 0) return true;
    m_bar.Show(GetProgress());
    return !IsInterrupted();
  }

 private:
  // 0 is what a point without a time has.
  void NoteTime(double time) {
    if (time == 0.0) return;
    if (time < m_firstTime) m_firstTime = time;
    if (time > m_lastTime) m_lastTime = time;
  }

  ProgressBar m_bar;
  long long m_count = 0;
  double m_firstTime = HUGE_VAL, m_lastTime = -HUGE_VAL;
};

void PrintAxis(const char* name, double low, double high) { std::printf("%s %14.3f to %14.3f\n", name, low, high); }

int Info(const Arguments& arguments) {
  CatchInterrupt();
  XyzTextSource source(XyzTextOptions{arguments.positionOnly, 10});
  if (!Open(arguments, source)) return kFoundWrong;
  Look look(source);
  const bool done = look.Process();
  const XyzTextSummary summary = source.SoFar();
  if (!done) return Fail("stopped");
  std::printf("%s, %s, %lld with a time, %lld broken\n", Counted(static_cast<std::size_t>(summary.points), "point", "points").c_str(),
              Counted(static_cast<std::size_t>(summary.lines), "line", "lines").c_str(), summary.timedPoints, summary.brokenLines);
  if (summary.points > 0) {
    PrintAxis("x", summary.minimum.x, summary.maximum.x);
    PrintAxis("y", summary.minimum.y, summary.maximum.y);
    PrintAxis("z", summary.minimum.z, summary.maximum.z);
  }
  if (look.HasTimes()) std::printf("time %s to %s UTC\n", UtcText(look.FirstTime()).c_str(), UtcText(look.LastTime()).c_str());
  std::fflush(stdout);
  return CheckReading(source, summary, arguments) ? kDone : kFoundWrong;
}

// ---- import ----

// Takes the points that are asked for into a file beside the target, which replaces it at the end or goes without a trace.
class Import : public XyzImporter {
 public:
  Import(XYZDataSource& source, const Arguments& arguments, const Page* page)
      : XyzImporter(&source, false), m_arguments(arguments), m_page(page), m_file(arguments.output), m_bar("importing") {}

  // Not begun when there is nowhere to write to. The bar is gone before anything is said.
  bool Process() override {
    const bool done = m_file.IsGood() && XyzImporter::Process();
    m_bar.Clear();
    return done;
  }

  // Puts the file in its place. False when it could not be written.
  bool Finish() {
    Write();
    return m_file.Finish();
  }

  bool Interrupted() const { return m_interrupted; }
  long long Taken() const { return m_taken; }

 protected:
  bool AddPoint(const TimePoint& point) override {
    if (++m_seen % kLook == 0 && !GoOn()) return false;
    if (!IsWanted(point) || m_wanted++ % m_arguments.every != 0) return true;
    ++m_taken;
    Append(point.position.x, ' ');
    Append(point.position.y, ' ');
    Append(point.position.z + m_arguments.shift, point.time != 0.0 ? ' ' : '\n');
    if (point.time != 0.0) Append(point.time, '\n');
    if (m_block.size() < kBlock) return true;
    Write();
    return m_file.IsGood();
  }

 private:
  bool GoOn() {
    m_bar.Show(GetProgress());
    m_interrupted = IsInterrupted();
    return !m_interrupted;
  }

  bool IsWanted(const TimePoint& point) const {
    return point.position.z >= m_arguments.low && point.position.z <= m_arguments.high &&
           (m_page == nullptr || m_page->IsPointInPage(point.position.x, point.position.y));
  }

  // To a thousandth, without zeros at the end.
  void Append(double value, char behind) {
    char text[340];
    const char* end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 3).ptr;
    while (end[-1] == '0') --end;
    if (end[-1] == '.') --end;
    m_block.append(text, static_cast<std::size_t>(end - text));
    m_block += behind;
  }

  void Write() {
    m_file.Write(m_block);
    m_block.clear();
  }

  const Arguments& m_arguments;
  const Page* m_page;
  OutputFile m_file;
  std::string m_block;
  ProgressBar m_bar;
  long long m_seen = 0, m_wanted = 0, m_taken = 0;
  bool m_interrupted = false;
};

int RunImport(const Arguments& arguments) {
  Page page;
  if (!arguments.page.empty() && !ReadPage(arguments.page, page)) return kBadUsage;
  XyzTextSource source(XyzTextOptions{arguments.positionOnly, 10});
  if (!Open(arguments, source)) return kFoundWrong;
  CatchInterrupt();
  bool good = false;
  {
    Import import(source, arguments, arguments.page.empty() ? nullptr : &page);
    const bool done = import.Process();
    if (import.Interrupted()) return Fail("stopped; nothing written");
    if (source.Result() != FileResult::Ok) return Fail("\"" + arguments.file + "\" could not be read to its end; nothing written");
    if (!done || !import.Finish()) return Fail("cannot write \"" + arguments.output + "\"; it is as it was");
    good = CheckReading(source, source.SoFar(), arguments);
    std::cout << arguments.output << ": " << import.Taken() << " of "
              << Counted(static_cast<std::size_t>(source.SoFar().points), "point", "points") << '\n';
  }
  return good ? kDone : kFoundWrong;
}

}  // namespace

void AddXyzCommand(CLI::App& program, int& exitCode) {
  CLI::App* const xyz = program.add_subcommand("xyz", "Count, bound and import points from text files");
  xyz->require_subcommand(1);
  xyz->footer(
      "A line is x y z, or x y z time, parted by blanks, tabs, commas or semicolons; the time in milliseconds since 1970 UTC, or as\n"
      "2026-05-10T08:00:00. \"#\" begins a comment. Lines that do not read are skipped and told.\n");
  const auto arguments = std::make_shared<Arguments>();

  CLI::App* app = xyz->add_subcommand("info", "Number of points, bounds, times, lines that do not read");
  app->add_option("FILE", arguments->file, "Text of points")->required();
  app->add_flag("--position-only", arguments->positionOnly, "Whatever stands behind z is not looked at");
  app->footer("Example:\n  zel xyz info samples/soundings/harbour.xyz\n\nExit code: 0, or 1 when lines do not read.\n");
  app->callback([arguments, &exitCode] { exitCode = Info(*arguments); });

  app = xyz->add_subcommand("import", "Points into a clean text, to a thousandth, all of them or those that are asked for");
  app->add_option("FILE", arguments->file, "Text of points")->required();
  app->add_option("OUTPUT", arguments->output, "Text to write; replaced only when all went well")->required();
  app->add_option("--page", arguments->page, "Only within left,bottom,right,top");
  app->add_option("--low", arguments->low, "Only with z from here up");
  app->add_option("--high", arguments->high, "Only with z up to here");
  app->add_option("--shift", arguments->shift, "Added to every z");
  app->add_option("--every", arguments->every, "Only every so many of them")->check(CLI::Range(1, 1000000));
  app->add_flag("--position-only", arguments->positionOnly, "Whatever stands behind z is not looked at");
  app->footer(
      "Ctrl-C stops it, and nothing is written.\n\nExample:\n"
      "  zel xyz import samples/soundings/harbour.xyz channel.xyz --page 3300,8200,3600,8300 --high -8\n");
  app->callback([arguments, &exitCode] { exitCode = RunImport(*arguments); });
}

}  // namespace zel
