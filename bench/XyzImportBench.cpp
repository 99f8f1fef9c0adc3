// The import of a text of positions, through XyzImporter and with the extents in the same pass, against the
// plainest loop there is (fast_float over the mapped file, the three numbers added up) and against fgets with
// sscanf. The file is in the page cache.

#include <fast_float/fast_float.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "adapters/xyz/XyzTextSource.h"
#include "bench/Compare.h"
#include "zelbase/data/XyzImporter.h"

namespace {

constexpr int kBarLines = 1000000;
constexpr double kMappedBar = 0.8;
constexpr double kScannedBar = 5.0;

enum class TimeColumn { None, Number, Text };

// A file for the life of a scope: soundings of a harbour in lines such as "543210.12 5812345.67 -12.345".
class SoundingsFile {
 public:
  SoundingsFile(int lines, TimeColumn times) {
    const int descriptor = mkstemp(m_name);
    std::FILE* const file = descriptor < 0 ? nullptr : fdopen(descriptor, "w");
    if (file == nullptr) {
      std::perror(m_name);
      std::exit(1);
    }
    std::mt19937 random(20260504);
    std::uniform_real_distribution<double> step(0.0, 1000.0);
    for (int i = 0; i < lines; ++i) {
      std::fprintf(file, "%.2f %.2f %.3f", 543000 + step(random), 5812000 + step(random), -step(random) / 50);
      if (times == TimeColumn::Number) std::fprintf(file, " %.0f", 1777890030500.0 + i * 20.0);
      if (times == TimeColumn::Text)
        std::fprintf(file, " 2026-05-04T%02d:%02d:%02d.%03dZ", i / 180000, i / 3000 % 60, i / 50 % 60, i % 50 * 20);
      std::fputc('\n', file);
    }
    m_size = static_cast<std::size_t>(std::ftell(file));
    std::fclose(file);
  }
  ~SoundingsFile() { unlink(m_name); }
  SoundingsFile(const SoundingsFile&) = delete;
  SoundingsFile& operator=(const SoundingsFile&) = delete;

  const char* Name() const { return m_name; }
  std::size_t Size() const { return m_size; }

 private:
  char m_name[32] = "/tmp/XyzImportBenchXXXXXX";
  std::size_t m_size = 0;
};

struct Sum {
  int points = 0;
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  void Add(double px, double py, double pz) {
    ++points;
    x += px;
    y += py;
    z += pz;
  }
  bool operator==(const Sum&) const = default;
};

class SumImport : public XyzImporter {
 public:
  using XyzImporter::XyzImporter;
  Sum sum;

 protected:
  bool AddPoint(const TimePoint& point) override {
    sum.Add(point.position.x, point.position.y, point.position.z);
    return true;
  }
};

Sum Import(const SoundingsFile& file) {
  XyzTextSource source(file.Name());
  SumImport import(&source, false);
  Point minimum, maximum;
  if (!import.Process() || !source.GetExtents(minimum, maximum) || source.Result() != FileResult::Ok) std::abort();
  Keep(minimum.x + maximum.x);
  return import.sum;
}

Sum ExtentsAlone(const SoundingsFile& file) {
  XyzTextSource source(file.Name());
  Point minimum, maximum;
  Sum sum;
  if (source.GetExtents(minimum, maximum)) sum.points = source.GetNumberOfPoints();
  Keep(minimum.x + maximum.x);
  return sum;
}

const char* Skip(const char* at, const char* end) {
  while (at != end && (*at == ' ' || *at == '\n')) ++at;
  return at;
}

Sum MappedLoop(const SoundingsFile& file) {
  const int descriptor = open(file.Name(), O_RDONLY);
  void* const map = mmap(nullptr, file.Size(), PROT_READ, MAP_PRIVATE, descriptor, 0);
  if (map == MAP_FAILED) std::abort();
  const char* at = static_cast<const char*>(map);
  const char* const end = at + file.Size();
  Sum sum;
  for (at = Skip(at, end); at != end; at = Skip(at, end)) {
    double numbers[3] = {};
    for (double& number : numbers) at = fast_float::from_chars(Skip(at, end), end, number).ptr;
    sum.Add(numbers[0], numbers[1], numbers[2]);
  }
  munmap(map, file.Size());
  close(descriptor);
  return sum;
}

Sum ScannedLoop(const SoundingsFile& file) {
  std::FILE* const stream = std::fopen(file.Name(), "r");
  char line[256];
  Sum sum;
  double x = 0.0, y = 0.0, z = 0.0;
  while (std::fgets(line, sizeof line, stream) != nullptr) {
    if (std::sscanf(line, "%lf %lf %lf", &x, &y, &z) == 3) sum.Add(x, y, z);
  }
  std::fclose(stream);
  return sum;
}

bool Compare(int lines) {
  const SoundingsFile file(lines, TimeColumn::None);
  if (!(Import(file) == MappedLoop(file)) || !(Import(file) == ScannedLoop(file))) {
    std::fprintf(stderr, "not the same points\n");
    return false;
  }
  const std::string title =
      "XYZ text, " + Grouped(static_cast<std::size_t>(lines)) + " lines (peers: fast_float over the mapped file; fgets with sscanf)";
  Comparison table(title.c_str());
  const std::string text(file.Size(), ' ');
  const auto limit = [&] { ReadOnce(text); };
  table.Row(
      "import with extents, mapped loop", lines, "ln", Comparison::BarAt(lines == kBarLines, kMappedBar), [&] { Keep(Import(file).x); },
      [&] { Keep(MappedLoop(file).x); }, limit);
  table.Row(
      "extents alone, mapped loop", lines, "ln", Comparison::BarAt(lines == kBarLines, kMappedBar),
      [&] { Keep(ExtentsAlone(file).points); }, [&] { Keep(MappedLoop(file).x); }, limit);
  table.Row(
      "import with extents, fgets and sscanf", lines, "ln", Comparison::BarAt(lines == kBarLines, kScannedBar),
      [&] { Keep(Import(file).x); }, [&] { Keep(ScannedLoop(file).x); }, limit);
  const SoundingsFile numbered(lines, TimeColumn::Number);
  const SoundingsFile texts(lines, TimeColumn::Text);
  table.Row(
      "import, times as numbers : as texts", lines, "ln", Comparison::kNoBar, [&] { Keep(Import(numbered).x); },
      [&] { Keep(Import(texts).x); }, limit);
  return table.Finish() == 0;
}

}  // namespace

int main() { return AtEachSize({10000, 100000, kBarLines}, Compare); }
