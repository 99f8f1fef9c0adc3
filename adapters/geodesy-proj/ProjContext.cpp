#include "adapters/geodesy-proj/ProjContext.h"

#include <algorithm>
#include <new>

namespace zelbase::detail {
namespace {

constexpr std::size_t kLongestCode = 64;

unsigned char Byte(char c) { return static_cast<unsigned char>(c); }

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsCodeText(std::string_view text) {
  const auto fits = [](char c) { return IsLetter(c) || IsDigit(c) || c == '_' || c == '-' || c == '.'; };
  return !text.empty() && text.size() <= kLongestCode && std::all_of(text.begin(), text.end(), fits);
}

bool IsNumber(std::string_view text) { return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit); }

// Shorter numbers are smaller: the codes have no zeros in front.
bool IsNumberBefore(std::string_view a, std::string_view b) { return a.size() != b.size() ? a.size() < b.size() : a < b; }

// Takes a sequence of UTF-8 off the front. What is none counts as one unknown character.
unsigned int TakeCharacter(std::string_view& text) {
  const unsigned char lead = Byte(text.front());
  text.remove_prefix(1);
  if (lead < 0x80) return lead;
  unsigned int character = lead < 0xE0 ? lead & 0x1Fu : lead < 0xF0 ? lead & 0x0Fu : lead & 0x07u;
  while (!text.empty() && (Byte(text.front()) & 0xC0u) == 0x80u) {
    character = (character << 6) | (Byte(text.front()) & 0x3Fu);
    text.remove_prefix(1);
  }
  return character;
}

std::vector<std::string> TakeList(PROJ_STRING_LIST list) {
  std::vector<std::string> texts;
  for (PROJ_STRING_LIST text = list; text != nullptr && *text != nullptr; ++text) texts.emplace_back(*text);
  proj_string_list_destroy(list);
  return texts;
}

}  // namespace

ProjContext::ProjContext() : m_context(proj_context_create()) {
  if (m_context == nullptr) throw std::bad_alloc();
  proj_log_func(m_context, this, Note);
  proj_context_set_enable_network(m_context, 0);
}

ProjContext::~ProjContext() { proj_context_destroy(m_context); }

void ProjContext::Note(void* context, int, const char* message) {
  if (message != nullptr) static_cast<ProjContext*>(context)->m_message = message;
}

std::string ProjContext::TakeMessage() {
  std::string message;
  message.swap(m_message);
  return message;
}

std::string ProjContext::DatabasePath() const {
  const char* const path = proj_context_get_database_path(m_context);
  return path != nullptr ? path : "";
}

std::string ProjContext::DataFolder() const {
  const std::string path = DatabasePath();
  return path.substr(0, path.rfind('/') + 1);
}

std::string ProjContext::Fact(const char* name) const { return FromProj(proj_context_get_database_metadata(m_context, name)); }

std::string FromProj(const char* text) {
  constexpr unsigned int kDash = 0x2013;
  std::string result;
  std::string_view rest = text != nullptr ? text : "";
  while (!rest.empty()) {
    const unsigned int character = TakeCharacter(rest);
    const bool same = character < 0x80 || (character >= 0xA0 && character <= 0xFF);
    result += same ? static_cast<char>(character) : character == kDash ? '\x96' : '?';
  }
  return result;
}

std::string ToProj(std::string_view text) {
  std::string result;
  for (const char c : text) {
    const unsigned char byte = Byte(c);
    if (byte < 0xA0) {
      result += byte < 0x80 ? c : '?';
    } else {
      result += static_cast<char>(0xC0u | (byte >> 6));
      result += static_cast<char>(0x80u | (byte & 0x3Fu));
    }
  }
  return result;
}

std::string CodeOf(const PJ* object) {
  const char* const authority = proj_get_id_auth_name(object, 0);
  const char* const code = proj_get_id_code(object, 0);
  return authority != nullptr && code != nullptr ? FromProj(authority) + ":" + FromProj(code) : "";
}

bool SplitCode(std::string_view text, std::string& authority, std::string& code) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return false;
  const std::string_view front = text.substr(0, colon), back = text.substr(colon + 1);
  if (!IsCodeText(front) || !IsCodeText(back)) return false;
  authority = front;
  std::transform(authority.begin(), authority.end(), authority.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  code = back;
  return true;
}

bool IsCodeBefore(const std::string& a, const std::string& b) {
  const std::size_t colonA = a.find(':'), colonB = b.find(':');
  if (colonA == std::string::npos || colonB == std::string::npos) return a < b;
  const std::string_view viewA = a, viewB = b;
  const std::string_view authorityA = viewA.substr(0, colonA), authorityB = viewB.substr(0, colonB);
  if (authorityA != authorityB) return authorityA < authorityB;
  const std::string_view codeA = viewA.substr(colonA + 1), codeB = viewB.substr(colonB + 1);
  const bool numberA = IsNumber(codeA), numberB = IsNumber(codeB);
  if (numberA != numberB) return numberA;
  return numberA ? IsNumberBefore(codeA, codeB) : codeA < codeB;
}

std::string LowerCase(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return result;
}

std::vector<std::string> CodesOf(const ProjContext& context, const std::string& authority, PJ_TYPE type, bool deprecated) {
  return TakeList(proj_get_codes_from_database(context.Get(), authority.c_str(), type, deprecated ? 1 : 0));
}

std::vector<std::string> AuthoritiesOf(const ProjContext& context) { return TakeList(proj_get_authorities_from_database(context.Get())); }

}  // namespace zelbase::detail
