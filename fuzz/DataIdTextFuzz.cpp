// Any bytes as the text of an identifier, of a data reference and of an offset, against a literal second reader; and as an archive
// of each container, which either reads and is written again as it was, or throws.

#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "zelbase/data/CCF_DataInfo.h"
#include "zelbase/data/CCompOffset.h"
#include "zelbase/data/CDataInfoArray.h"
#include "zelbase/data/CMapTreeitemToDatainfo.h"
#include "zelbase/data/CMapTreeitemToOffset.h"
#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/platform/CArchive.h"
#include "zelbase/platform/CArchiveException.h"
#include "zelbase/platform/CSharedFile.h"

namespace {

bool IsWhite(char c) { return c == ' ' || (c >= 9 && c <= 13); }
bool IsFigure(char c) { return c >= '0' && c <= '9'; }

// One number at `at`, a digit at a time modulo `modulus`; `at` moves behind it.
bool TakeNumber(const std::string& text, std::size_t& at, unsigned long long modulus, unsigned long long& value) {
  std::size_t i = at;
  while (i < text.size() && IsWhite(text[i])) ++i;
  const bool negative = i < text.size() && text[i] == '-';
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
  if (i >= text.size() || !IsFigure(text[i])) return false;
  unsigned long long sum = 0;
  for (; i < text.size() && IsFigure(text[i]); ++i) sum = (sum * 10 + static_cast<unsigned>(text[i] - '0')) % modulus;
  value = negative ? (modulus - sum) % modulus : sum;
  at = i;
  return true;
}

// The numbers with commas between, until something else comes.
std::vector<unsigned short> Numbers(const std::string& text) {
  std::vector<unsigned short> numbers;
  std::size_t at = 0;
  unsigned long long value = 0;
  while (numbers.size() < 6 && TakeNumber(text, at, 65536, value)) {
    numbers.push_back(static_cast<unsigned short>(value));
    if (at >= text.size() || text[at] != ',') break;
    ++at;
  }
  return numbers;
}

void CheckId(const std::string& text) {
  const std::vector<unsigned short> n = Numbers(text);
  const CDataId before(11, 12, 13, 14);
  CDataId id = before;
  const bool read = id.SetFromKey(text);
  Require(read == (n.size() >= 4), "an identifier reads with four numbers");
  Require(id == (read ? CDataId(n[0], n[2], n[3], n[1]) : before), "the identifier's numbers");
  CDataId again;
  Require(again.SetFromString(id.GetKey()) && again == id && again.GetKey() == id.GetKey(), "a key goes there and back");
}

void CheckInfo(const std::string& text) {
  const std::vector<unsigned short> n = Numbers(text);
  const CDataInfo before(CDataId(11, 12, 13, 14), 15, 16);
  CDataInfo info = before;
  const bool read = info.SetFromString(text);
  Require(read == (n.size() >= 5), "a reference reads with five numbers");
  CDataInfo expected = before;
  if (read) expected.SetInfo(CDataId(n[0], n[2], n[3], n[1]), n[4], n.size() == 6 ? n[5] : 16);
  Require(info == expected, "the reference's numbers");
  CDataInfo again;
  Require(again.SetFromString(info.GenerateString()) && again == info, "a reference goes there and back");
}

std::vector<std::string> Items(const std::string& text) {
  std::vector<std::string> items(1);
  for (const char c : text) {
    if (c == ',') {
      items.emplace_back();
    } else {
      items.back() += c;
    }
  }
  return items;
}

bool Same(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

void CheckOffset(const std::string& text) {
  CCompOffset offset;
  offset.SetOffsetName("before");
  offset.SetOffset(1, 2, 3);
  const bool read = offset.SetFromString(text);

  const std::vector<std::string> items = Items(text);
  const auto item = [&](std::size_t i) { return i < items.size() ? items[i] : std::string("?"); };
  bool all = true;
  const auto number = [&](std::size_t i, unsigned long long modulus, unsigned long long otherwise) {
    std::size_t at = 0;
    unsigned long long value = otherwise;
    all = TakeNumber(item(i), at, modulus, value) && all;
    return value;
  };
  const auto real = [&](std::size_t i, double otherwise) {
    double value = otherwise;
    all = zelbase::detail::ScanDouble(item(i), value) != 0 && all;
    return value;
  };
  const unsigned long long word = 0x100000000;
  Require(offset.GetOffsetType() == number(0, word, 2), "the offset's type");
  Require(offset.GetOffsetVesselId() == number(1, word, 1), "the offset's vessel");
  all = items.size() > 2 && all;
  Require(offset.GetOffsetName() == (items.size() > 2 ? items[2] : "before"), "the offset's name");
  std::array<unsigned short, 4> id{};
  for (std::size_t i = 0; i < 4; ++i) id[i] = static_cast<unsigned short>(number(3 + i, 65536, 0));
  Require(offset.GetOffsetDataId() == CDataId(id[0], id[2], id[3], id[1]), "the offset's identifier");
  double x = 0, y = 0, z = 0;
  offset.GetOffset(x, y, z);
  Require(Same(x, real(7, 1)) && Same(y, real(8, 2)) && Same(z, real(9, 3)), "the offset's position");
  Require(read == all, "an offset reads with ten items");

  CCompOffset again;
  const bool readAgain = again.SetFromString(offset.GenerateString());
  const bool finite = std::isfinite(x) && std::isfinite(y) && std::isfinite(z);
  Require(readAgain == finite, "what is finite goes there and back");
  if (finite) Require(again.GenerateString() == offset.GenerateString(), "the text goes there and back");
}

// Reads the bytes; what was read is written, read and written again, and both texts are the same.
template <class Container>
void CheckArchive(const HGLOBAL& bytes) {
  Container container;
  CSharedFile file(bytes);
  CArchive archive(&file, CArchive::load, 64);
  try {
    container.Serialize(archive);
  } catch (const CArchiveException& failure) {
    Require(failure.m_cause == CArchiveException::endOfFile, "a short archive is told as such");
    return;
  }
  const auto store = [](Container& stored) {
    CSharedFile target;
    CArchive storing(&target, CArchive::store, 64);
    stored.Serialize(storing);
    storing.Close();
    return target.Detach();
  };
  const HGLOBAL first = store(container);
  Container again;
  CSharedFile second(first);
  CArchive loading(&second, CArchive::load, 64);
  again.Serialize(loading);
  Require(*store(again) == *first, "an archive goes there and back");
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckId(text);
  CheckInfo(text);
  CheckOffset(text);
  const HGLOBAL bytes = std::make_shared<const std::string>(text);
  CheckArchive<CDataInfoArray>(bytes);
  CheckArchive<CMapTreeitemToDatainfo>(bytes);
  CheckArchive<CMapTreeitemToOffset>(bytes);
  CheckArchive<CCF_DataInfo>(bytes);
}
