#include "tests/faults/CrashStates.h"

#include <cstddef>
#include <utility>

namespace {

enum class Fate { Whole, Lost, Front, Back, Zeros };

using Kind = DiskChange::Kind;

std::string FolderOf(const std::string& path) { return path.substr(0, path.find_last_of('/')); }

bool IsOnFile(Kind kind) { return kind == Kind::Write || kind == Kind::Truncate; }

bool IsOnName(Kind kind) { return kind == Kind::Create || kind == Kind::Rename || kind == Kind::Remove; }

bool ForcesOut(const DiskChange& sync, const DiskChange& change) {
  if (sync.kind == Kind::Sync) return IsOnFile(change.kind) && sync.file == change.file;
  return sync.kind == Kind::SyncFolder && IsOnName(change.kind) && FolderOf(change.path) == sync.path;
}

std::vector<Fate> FatesOf(const DiskChange& change) {
  if (change.kind == Kind::Write) return {Fate::Whole, Fate::Lost, Fate::Front, Fate::Back, Fate::Zeros};
  return {Fate::Whole, Fate::Lost};
}

// The disk as names of files and files by number.
struct Disk {
  std::map<std::string, std::string> names;  // name to number
  std::map<std::string, std::string> files;  // number to bytes
};

void Put(std::string& file, std::size_t offset, const std::string& bytes) {
  if (file.size() < offset + bytes.size()) file.resize(offset + bytes.size(), '\0');
  file.replace(offset, bytes.size(), bytes);
}

void ApplyWrite(std::string& file, const DiskChange& change, Fate fate) {
  const auto offset = static_cast<std::size_t>(change.offset);
  const std::size_t half = change.bytes.size() / 2;
  switch (fate) {
    case Fate::Whole: return Put(file, offset, change.bytes);
    case Fate::Front: return Put(file, offset, change.bytes.substr(0, half));
    case Fate::Back: return Put(file, offset + half, change.bytes.substr(half));
    case Fate::Zeros: return Put(file, offset, std::string(change.bytes.size(), '\0'));
    case Fate::Lost: return;
  }
}

// A change and the file that it is about: a rename moves the file that then had the name, whatever else came to pass.
struct Step {
  DiskChange change;
  std::string file;
  bool pending = false;
};

std::vector<Step> StepsOf(const DiskContent& before, const std::vector<DiskChange>& changes, std::size_t done) {
  std::map<std::string, std::string> names;
  for (const auto& [path, bytes] : before) names[path] = path;
  std::map<unsigned long long, std::string> known;  // numbers of files that were there before are learnt as they are written
  std::vector<Step> steps;
  for (std::size_t i = 0; i < done; ++i) {
    const DiskChange& change = changes[i];
    Step step{change, {}, IsOnFile(change.kind) || IsOnName(change.kind)};
    for (std::size_t later = i + 1; later < done; ++later) {
      if (ForcesOut(changes[later], change)) step.pending = false;
    }
    switch (change.kind) {
      case Kind::Create: known[change.file] = names[change.path] = std::to_string(change.file); break;
      case Kind::Rename:
        step.file = names[change.path];
        names[change.target] = step.file;
        names.erase(change.path);
        break;
      case Kind::Remove: names.erase(change.path); break;
      default:
        if (known.count(change.file) == 0) known[change.file] = names.count(change.path) != 0 ? names[change.path] : change.path;
    }
    if (change.kind != Kind::Rename) step.file = known[change.file];
    steps.push_back(step);
  }
  return steps;
}

void Apply(Disk& disk, const Step& step, Fate fate) {
  switch (step.change.kind) {
    case Kind::Write: return ApplyWrite(disk.files[step.file], step.change, fate);
    case Kind::Truncate:
      if (fate == Fate::Whole) disk.files[step.file].resize(static_cast<std::size_t>(step.change.offset), '\0');
      return;
    case Kind::Create:
      if (fate == Fate::Whole) disk.names[step.change.path] = step.file;
      return;
    case Kind::Rename:
      if (fate != Fate::Whole) return;
      disk.names.erase(step.change.path);
      disk.names[step.change.target] = step.file;
      return;
    case Kind::Remove:
      if (fate == Fate::Whole) disk.names.erase(step.change.path);
      return;
    default: return;
  }
}

class Walk {
 public:
  Walk(std::vector<Step> steps, const std::function<void(const DiskContent&)>& look) : m_steps(std::move(steps)), m_look(look) {}

  void From(std::size_t at, const Disk& disk) {
    if (at == m_steps.size()) return Look(disk);
    const Step& step = m_steps[at];
    for (const Fate fate : step.pending ? FatesOf(step.change) : std::vector<Fate>{Fate::Whole}) {
      Disk next = disk;
      Apply(next, step, fate);
      From(at + 1, next);
    }
  }

  unsigned long long Count() const { return m_count; }

 private:
  void Look(const Disk& disk) {
    DiskContent content;
    for (const auto& [name, number] : disk.names) {
      const auto file = disk.files.find(number);
      content[name] = file != disk.files.end() ? file->second : std::string();
    }
    m_look(content);
    ++m_count;
  }

  const std::vector<Step> m_steps;
  const std::function<void(const DiskContent&)>& m_look;
  unsigned long long m_count = 0;
};

}  // namespace

unsigned long long ForEachCrashState(const DiskContent& before, const std::vector<DiskChange>& changes, std::size_t done,
                                     const std::function<void(const DiskContent&)>& look) {
  Disk disk;
  for (const auto& [path, bytes] : before) {
    disk.names[path] = path;
    disk.files[path] = bytes;
  }
  Walk walk(StepsOf(before, changes, done), look);
  walk.From(0, disk);
  return walk.Count();
}
