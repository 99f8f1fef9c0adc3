// Tables of numbered texts that come from outside: a text file, a shared library, and several of them one behind the other.
// Internal to the library; LanguageModules.h says where they are looked for, and docs/language.md how they are written.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "zelbase/errors/NumberedTexts.h"
#include "zelbase/frame/LanguageModules.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// The texts of a file in the form of the settings, section "Texts": the key is the number in plain decimal digits (no sign,
// no zero in front, nothing behind, at most 2147483647), the value the text. Other keys are passed over, and an empty text is
// none. Escapes are those of StrHandleEscape; a text with one that gives a zero byte, such as an unknown one, stays as it is
// written. Never changes once it is read.
class ZELBASE_API TextFileTable : public NumberedTextTable {
 public:
  // Null, without a word, when the file does not open, cannot be read or has no such section.
  static std::shared_ptr<const TextFileTable> Read(const std::string& fileName);

  bool Get(int number, std::string& text) const override;

 private:
  std::unordered_map<int, std::string> m_texts;
};

// The texts of a loaded shared library; null and "" are none.
class ZELBASE_API ModuleTextTable : public NumberedTextTable {
 public:
  explicit ModuleTextTable(ZelNumberedTextFunction texts) : m_texts(texts) {}

  bool Get(int number, std::string& text) const override;

 private:
  ZelNumberedTextFunction m_texts;
};

// A table and the resource handle that stands for it in the framework's module state.
struct LanguageTable {
  HINSTANCE handle = nullptr;
  std::shared_ptr<const NumberedTextTable> table;
};

// Several tables; the first that has a number gives its text.
class ZELBASE_API LanguageTableChain : public NumberedTextTable {
 public:
  explicit LanguageTableChain(std::vector<LanguageTable> tables);

  const std::vector<LanguageTable>& Tables() const { return m_tables; }

  bool Get(int number, std::string& text) const override;

 private:
  std::vector<LanguageTable> m_tables;
};

// Loads the language module whose path up to "_res" is `path`. The first of these that gives texts: the file with the ending
// ".dll" and the one with ".ini", each read as a text file; the shared library with this system's ending. No table when none
// does; the library is unloaded again then.
ZELBASE_API LanguageTable LoadLanguageTable(const std::string& path);

}  // namespace zelbase::detail
