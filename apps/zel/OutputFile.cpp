#include "OutputFile.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace zel {
namespace {

constexpr int kMostNames = 1000;

}  // namespace

OutputFile::OutputFile(const std::string& target) : m_target(target) {
  if (target.empty()) return;
  std::error_code failed;
  if (std::filesystem::exists(std::filesystem::symlink_status(target, failed))) {
    if (!std::filesystem::is_regular_file(target, failed)) return;
    m_target = std::filesystem::canonical(target, failed).string();
    if (failed) return;
  }
  m_good = MakeBeside();
}

OutputFile::~OutputFile() {
  if (m_file != nullptr) std::fclose(m_file);
  std::error_code ignored;
  if (!m_beside.empty()) std::filesystem::remove(m_beside, ignored);
}

// "x" never opens what is there: that may be somebody's, or another run's.
bool OutputFile::MakeBeside() {
  for (int i = 0; i < kMostNames; ++i) {
    const std::string name = m_target + ".new" + (i == 0 ? "" : std::to_string(i));
    m_file = std::fopen(name.c_str(), "wbxe");
    if (m_file != nullptr) {
      m_beside = name;
      return true;
    }
    if (errno != EEXIST) return false;
  }
  return false;
}

void OutputFile::Write(std::string_view bytes) {
  if (m_file != nullptr && m_good && std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size()) m_good = false;
}

bool OutputFile::Finish() {
  if (m_file == nullptr || !m_good) return m_good;
  // On the disk before it has the name: a power cut leaves the old one or the new one.
  m_good = std::fflush(m_file) == 0 && fsync(fileno(m_file)) == 0;
  m_good = std::fclose(m_file) == 0 && m_good;
  m_file = nullptr;
  if (!m_good) return false;
  std::error_code failed;
  const std::filesystem::file_status former = std::filesystem::status(m_target, failed);
  if (std::filesystem::exists(former)) std::filesystem::permissions(m_beside, former.permissions(), failed);
  failed.clear();
  std::filesystem::rename(m_beside, m_target, failed);
  m_good = !failed;
  if (m_good) m_beside.clear();
  return m_good;
}

}  // namespace zel
