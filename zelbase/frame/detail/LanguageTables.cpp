#include "zelbase/frame/detail/LanguageTables.h"

#include <limits>
#include <new>
#include <string_view>
#include <utility>

#include "zelbase/config/FileObject.h"
#include "zelbase/config/detail/QuietOpen.h"
#include "zelbase/frame/TextEscapes.h"
#include "zelbase/frame/detail/Characters.h"
#include "zelbase/platform/PlatformModules.h"

namespace zelbase::detail {

namespace {

constexpr const char* kTextsSection = "Texts";

// Strict, so that each number has one key.
bool ParseNumber(std::string_view key, int& number) {
  constexpr long long kMost = std::numeric_limits<int>::max();
  if (key.empty() || key.size() > 10 || (key.front() == '0' && key.size() > 1)) return false;
  long long value = 0;
  for (const char c : key) {
    if (!IsDigit(c)) return false;
    value = value * 10 + (c - '0');
  }
  if (value > kMost) return false;
  number = static_cast<int>(value);
  return true;
}

std::string WithoutEscapes(const std::string& written) {
  std::string text = StrHandleEscape(written);
  return text.find('\0') == std::string::npos ? text : written;
}

// A text table has no handle of the system's; its address stands for it.
LanguageTable WithAddress(std::shared_ptr<const TextFileTable> table) {
  return {const_cast<TextFileTable*>(table.get()), std::move(table)};
}

LanguageTable LoadModuleTable(const std::string& path) {
  PlatformModules& modules = PlatformService<PlatformModules>::Current();
  const ModuleHandle module = modules.Load(path + modules.LibraryEnding());
  if (module == nullptr) return {};
  try {
    const auto texts = reinterpret_cast<ZelNumberedTextFunction>(modules.FindExport(module, NUMBERED_TEXT_EXPORT));
    if (texts != nullptr) return {module, std::make_shared<ModuleTextTable>(texts)};
  } catch (const std::bad_alloc&) {
    modules.Unload(module);
    throw;
  }
  modules.Unload(module);
  return {};
}

// Null as well when the module's own code fails: texts are asked for where nothing may be thrown, and the built-in one serves.
const char* AskQuietly(ZelNumberedTextFunction texts, int number) {
  try {
    return texts(number);
  } catch (...) {
    return nullptr;
  }
}

}  // namespace

std::shared_ptr<const TextFileTable> TextFileTable::Read(const std::string& fileName) {
  FileObject file;
  if (!OpenQuietly(file, fileName) || !file.HasSection(kTextsSection)) return nullptr;
  const auto table = std::make_shared<TextFileTable>();
  FobjSection cursor;
  std::string key;
  std::string text;
  for (bool found = file.GetFirstMapEntry(cursor, kTextsSection, key, text); found; found = file.GetNextMapEntry(cursor, key, text)) {
    int number = 0;
    if (!ParseNumber(key, number)) continue;
    text = WithoutEscapes(text);
    if (!text.empty()) table->m_texts.emplace(number, text);
  }
  return table;
}

bool TextFileTable::Get(int number, std::string& text) const {
  const auto found = m_texts.find(number);
  if (found == m_texts.end()) return false;
  text = found->second;
  return true;
}

bool ModuleTextTable::Get(int number, std::string& text) const {
  const char* const known = AskQuietly(m_texts, number);
  if (known == nullptr || *known == '\0') return false;
  text = known;
  return true;
}

LanguageTableChain::LanguageTableChain(std::vector<LanguageTable> tables) : m_tables(std::move(tables)) {}

bool LanguageTableChain::Get(int number, std::string& text) const {
  for (const LanguageTable& each : m_tables) {
    if (each.table->Get(number, text)) return true;
  }
  return false;
}

LanguageTable LoadLanguageTable(const std::string& path) {
  for (const char* const ending : {".dll", ".ini"}) {
    std::shared_ptr<const TextFileTable> table = TextFileTable::Read(path + ending);
    if (table != nullptr) return WithAddress(std::move(table));
  }
  return LoadModuleTable(path);
}

}  // namespace zelbase::detail
