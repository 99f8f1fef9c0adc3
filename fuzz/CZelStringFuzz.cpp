// Any bytes as list, separator, flag and calls to CZelString; a plain vector of strings is kept beside it and
// must agree.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Target.h"
#include "zelbase/frame/CZelString.h"

namespace {

void Check(bool holds) {
  if (!holds) std::abort();
}

// Takes calls and their arguments off the input.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : m_rest(reinterpret_cast<const char*>(data), size) {}

  bool Empty() const { return m_rest.empty(); }

  unsigned char Byte() {
    if (m_rest.empty()) return 0;
    const char c = m_rest.front();
    m_rest.remove_prefix(1);
    return static_cast<unsigned char>(c);
  }

  // Mostly near a short list, now and then far off.
  int Index() {
    const int value = static_cast<signed char>(Byte());
    if (value == 100) return INT32_MAX;
    if (value == -100) return INT32_MIN;
    return value;
  }

  std::string Text() {
    const std::size_t length = std::min<std::size_t>(Byte(), m_rest.size());
    const std::string text(m_rest.substr(0, length));
    m_rest.remove_prefix(length);
    return text;
  }

 private:
  std::string_view m_rest;
};

std::string Trimmed(const std::string& text) {
  const auto first = text.find_first_not_of("\t\n\v\f\r ");
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of("\t\n\v\f\r ") - first + 1);
}

// What CZelString should hold.
struct Model {
  std::vector<std::string> items;
  std::string text;
  char separator = ',';
  bool trim = false;

  void Split() {
    items.assign(1, "");
    bool blankBefore = true;
    for (const char c : text) {
      if (c != separator) {
        items.back() += c;
      } else if (separator != ' ' || !blankBefore) {
        items.emplace_back();
      }
      blankBefore = c == ' ';
    }
    if (separator == ' ' && blankBefore && items.size() > 1) items.pop_back();
    if (!trim) return;
    for (std::string& item : items) item = Trimmed(item);
  }

  int Size() const { return static_cast<int>(items.size()); }

  std::string Parts(int first, int end) const {
    std::string parts;
    for (int i = std::max(first, 0); i < std::min(end, Size()); ++i) {
      parts += items[static_cast<std::size_t>(i)];
      parts += separator;
    }
    return parts;
  }

  int ElementNumber(const std::string& part) const {
    const std::string all = separator + std::string(text.c_str()) + separator;
    const auto place = all.find(separator + part + separator);
    if (place == std::string::npos) return -1;
    return static_cast<int>(std::count(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(place), separator));
  }
};

template <class Number>
void CheckGet(const CZelString& list, int index, Number before) {
  Number value = before;
  if (!list.GetItem(index, value)) Check(value == before);
}

void CheckEqual(const CZelString& list, const Model& model) {
  Check(list.Size() == model.Size());
  Check(list.IsEmpty() == model.items.empty());
  Check(list.CountSeparators() == model.Size() - 1);
  Check(list.GetString() == model.text);
  std::string joined = model.Parts(0, model.Size());
  if (!joined.empty()) joined.pop_back();
  Check(list.String() == joined);
  for (int i = 0; i < model.Size(); ++i) Check(list[i] == model.items[static_cast<std::size_t>(i)]);
}

void CheckBoundaries(const CZelString& list, const Model& model, int index) {
  int first = -7;
  int last = -7;
  const bool there = index >= 0 && index < model.Size();
  Check(list.GetItemBoundaries(index, first, last) == there);
  if (!there) {
    Check(first == -7 && last == -7);
    return;
  }
  const std::string& item = model.items[static_cast<std::size_t>(index)];
  Check(static_cast<std::size_t>(first) == model.Parts(0, index).size());
  Check(last == (item.empty() ? -1 : first + static_cast<int>(item.size()) - 1));
}

void Ask(const CZelString& list, const Model& model, Input& input) {
  const int index = input.Index();
  CheckBoundaries(list, model, index);
  CheckGet(list, index, 7);
  CheckGet(list, index, true);
  CheckGet(list, index, 7u);
  CheckGet(list, index, static_cast<unsigned short>(7));
  CheckGet(list, index, 7.5);
  CheckGet(list, index, 7.5f);
  CheckGet(list, index, std::string("before"));
  Check(list.Left(index) == model.Parts(0, index));
  Check(list.Right(index) == (index < 0 ? "" : model.Parts(model.Size() - std::min(index, model.Size()), model.Size())));
  int place = -7;
  const bool found = list.HasSubString(input.Text(), place);
  Check(found ? place >= 0 && place < model.Size() : place == -7);
}

void Change(CZelString& list, Model& model, Input& input) {
  const unsigned char call = input.Byte();
  const int index = input.Index();
  const bool inside = index >= 0 && index < model.Size();
  switch (call % 9) {
    case 0: {
      model.text = input.Text();
      model.trim = (call & 16) != 0;
      list.LoadString(model.text, model.trim);
      model.Split();
      break;
    }
    case 1: {
      model.separator = static_cast<char>(input.Byte());
      list.SetSeparator(model.separator);
      model.Split();
      break;
    }
    case 2: {
      const std::string text = input.Text();
      const bool taken = index >= 0 && index <= CZelString::kLastIndex;
      Check(list.SetItem(index, text) == taken);
      if (!taken) break;
      if (!inside) model.items.resize(static_cast<std::size_t>(index) + 1);
      model.items[static_cast<std::size_t>(index)] = text;
      break;
    }
    case 3: {
      const std::string text = input.Text();
      list.Insert(index, text);
      if (inside || index == model.Size()) model.items.insert(model.items.begin() + index, text);
      break;
    }
    case 4: {
      const int count = input.Index();
      list.Erase(index, count);
      for (int i = 0; inside && i < count && index < model.Size(); ++i) model.items.erase(model.items.begin() + index);
      break;
    }
    case 5: {
      model.items.push_back(input.Text());
      list += model.items.back();
      break;
    }
    case 6: {
      const CZelString copy = list + "one more";
      Check(copy.Size() == list.Size() + 1);
      list = copy;
      model.items.push_back("one more");
      break;
    }
    case 7: {
      list.Clear();
      model.items.clear();
      model.text.clear();
      break;
    }
    default: {
      const std::string part = input.Text().c_str();
      Check(list.GetElementNumber(part.c_str(), 0) == model.ElementNumber(part));
      list[index] = part;  // out of range it goes nowhere
      if (inside) model.items[static_cast<std::size_t>(index)] = part;
    }
  }
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  Model model;
  model.separator = static_cast<char>(input.Byte());
  model.trim = (input.Byte() & 1) != 0;
  model.text = input.Text();
  model.Split();
  CZelString list(model.text, model.separator, model.trim);
  CheckEqual(list, model);
  while (!input.Empty() && model.Size() < 4000) {
    Change(list, model, input);
    Ask(list, model, input);
    CheckEqual(list, model);
  }
}
