// Wordings and numbered texts for tests, installed for the life of an object.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "zelbase/errors/ErrorWording.h"
#include "zelbase/errors/NumberedTexts.h"

class FixedWording : public ErrorWording {
 public:
  using Texts = std::map<std::pair<std::string, std::string>, std::string>;
  explicit FixedWording(Texts texts) : m_texts(std::move(texts)) {}

  bool Get(const std::string& section, const std::string& key, std::string& text) const override {
    const auto found = m_texts.find({section, key});
    if (found == m_texts.end()) return false;
    text = found->second;
    return true;
  }

 private:
  Texts m_texts;
};

class WordingGuard {
 public:
  explicit WordingGuard(FixedWording::Texts texts) : m_former(ErrorWording::Install(std::make_shared<FixedWording>(std::move(texts)))) {}
  ~WordingGuard() { ErrorWording::Install(std::move(m_former)); }
  WordingGuard(const WordingGuard&) = delete;
  WordingGuard& operator=(const WordingGuard&) = delete;

 private:
  std::shared_ptr<const ErrorWording> m_former;
};

class FixedTexts : public NumberedTextTable {
 public:
  explicit FixedTexts(std::map<int, std::string> texts) : m_texts(std::move(texts)) {}

  bool Get(int number, std::string& text) const override {
    const auto found = m_texts.find(number);
    if (found == m_texts.end()) return false;
    text = found->second;
    return true;
  }

 private:
  std::map<int, std::string> m_texts;
};

class NumberedTextsGuard {
 public:
  explicit NumberedTextsGuard(std::map<int, std::string> texts)
      : m_former(InstallNumberedTexts(std::make_shared<FixedTexts>(std::move(texts)))) {}
  ~NumberedTextsGuard() { InstallNumberedTexts(std::move(m_former)); }
  NumberedTextsGuard(const NumberedTextsGuard&) = delete;
  NumberedTextsGuard& operator=(const NumberedTextsGuard&) = delete;

 private:
  std::shared_ptr<const NumberedTextTable> m_former;
};
