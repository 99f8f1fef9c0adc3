// PROJ's library as the classes of this plug-in use it: a context of each object's own that is silent and stays off the network,
// pointers that free, and texts in the suite's characters. Neighbours: ProjCoordSys.h, ProjDatabase.h, ProjStaticData.h,
// ProjGeoidModel.h, which stand on it.
#pragma once

#include <proj.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zelbase::detail {

struct FreePj {
  void operator()(PJ* object) const { proj_destroy(object); }
};
using PjPointer = std::unique_ptr<PJ, FreePj>;

// Not copyable. Everything made with a context must go before it: members that hold such things stand behind it in their class.
// One thread at a time for each.
class ProjContext {
 public:
  // Throws std::bad_alloc when there is no memory.
  ProjContext();
  ~ProjContext();
  ProjContext(const ProjContext&) = delete;
  ProjContext& operator=(const ProjContext&) = delete;

  PJ_CONTEXT* Get() const { return m_context; }

  // What PROJ complained of last, in UTF-8; it is forgotten with that.
  std::string TakeMessage();

  // The folder that PROJ's database lies in, with a "/" at the end, and the database itself, in this system's form. Empty when
  // there is none.
  std::string DataFolder() const;
  std::string DatabasePath() const;

  // An entry of the database's own table of facts; empty when there is none.
  std::string Fact(const char* name) const;

 private:
  static void Note(void* context, int level, const char* message);

  PJ_CONTEXT* m_context;
  std::string m_message;
};

// From UTF-8 to Windows-1252, with "?" for what that has no place for; null gives an empty text. PROJ's own names need little
// beside Latin-1.
std::string FromProj(const char* text);

// From Windows-1252 to UTF-8, with "?" for the bytes 0x80 to 0x9F, which no definition of a system needs.
std::string ToProj(std::string_view text);

// "EPSG:4326"; empty when there is no code.
std::string CodeOf(const PJ* object);

// "EPSG", "4326" from "epsg:4326". False when the text is not of this form: authority and code are letters, digits, "_", "-" and
// ".", 64 at most of each.
bool SplitCode(std::string_view text, std::string& authority, std::string& code);

// The order of lists: by authority, then by number where both codes are numbers, then by text.
bool IsCodeBefore(const std::string& a, const std::string& b);

// A to Z as a to z; everything else as it is.
std::string LowerCase(std::string_view text);

// Codes of one kind from one authority's part of the database; deprecated ones with `deprecated`.
std::vector<std::string> CodesOf(const ProjContext& context, const std::string& authority, PJ_TYPE type, bool deprecated);
std::vector<std::string> AuthoritiesOf(const ProjContext& context);

}  // namespace zelbase::detail
