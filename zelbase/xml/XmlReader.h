// Fills an element tree from XML text, the part of XML that the suite's own files use. Neighbours: XmlElement.h, the tree;
// XmlWriter.h, the way back; XmlFault.h, why a reading was refused.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/xml/XmlElement.h"
#include "zelbase/xml/XmlFault.h"

//   XmlElement root;
//   XmlReader reader(root);
//   if (!reader.ReadFile(name)) std::cerr << reader.LastReport().line << ": " << XmlFaultText(reader.LastReport().fault);
//
// What it takes: elements, attributes in double quotes, text, comments, and the references &quot; &amp; &apos; &lt; &gt;.
// Declarations, DOCTYPE and processing instructions are passed over up to the next ">". There are no numeric references and no
// CDATA. White space is blank, tab, CR and LF; text of nothing else is dropped, other text is kept with all its blanks.
//
// Strict: a tag without a name, a second root, a closing tag that does not fit, an attribute that is not name="value" refuse the
// document: false, and the target is empty.
//
// Lenient, and relied upon. Kept, each of them:
//  - The end of the text within a tag, or with elements open, ends the reading with true and what was read before.
//  - So does an unknown reference in a text, inside the root or outside. In an attribute it refuses the document.
//  - Text outside the root, and behind the last tag, is dropped without a word.
//  - A ">" always ends a tag, also within a value. A comment ends only at "-->" behind at least "<!--": "<!-->" and "<!--->" open
//    one that goes on, "<!---->" is a whole one.
//  - A tag's name ends at white space or "/" alone. "</a x="1">" and "</a/>" close an a; "<a/b c="1"/>" is an a.
//  - An element is closed at once only if the very last character of its tag is "/": "<a b="1"/ >" stays open.
//  - Attributes are found from their "=" signs: the value lies between the next two double quotes wherever they are, and the name
//    reaches back to the last white space, across an attribute before it if there is no blank between.
//  - An attribute that comes again in its tag replaces the first one's value.
//  - A text behind anything else of its element, a child or a text, becomes a child without a name.
//
// Depth is not limited and takes no stack. Time is proportional to the length of the text times the logarithm of the number of
// attributes in a tag. The tree of a hostile text takes at most 200 bytes for each of its bytes while it is read. Apart from
// both stand attribute names that run into each other: those of a tag may sum to 64 MiB, and more is refused.
//
// Without memory std::bad_alloc passes, and the target is empty.
//
// The target must outlive the reader. A reader may be used again; each reading clears the target first. The text must not
// lie in the target. One thread at a time.
class ZELBASE_API XmlReader {
 public:
  explicit XmlReader(XmlElement& root) : m_root(root) {}

  // Reads a whole regular file of less than 4 GiB; null is no file. The name may lie in the target.
  bool ReadFile(const char* path);

  // Any bytes, zeros included; no terminator needed. False for null and a length other than 0.
  bool ReadData(const char* data, unsigned int length);

  // What the last reading came upon, whether it was refused or only ended early. None before the first.
  const XmlReport& LastReport() const { return m_report; }

 private:
  struct Found {
    std::string_view name;
    std::string_view value;
  };

  bool FindNextTag();
  bool TakeText(std::string_view text);
  bool TakePlainTag();
  bool TakePlainClosing();
  const char* TakePlainAttributes(const char* at);
  bool CutTag(std::string_view& tag);
  bool ParseTag(std::string_view tag);
  bool OpenElement(std::string_view tag, std::string_view name);
  bool CloseElement(std::string_view tag, std::string_view name);
  bool ParseAttributes(std::string_view tag, bool references);
  void DropRepeatedNames();
  void AddElement(std::string_view name, bool open, bool references);
  void CloseInnermost();
  XmlElement& Innermost() { return m_open.back() == 0 ? m_root : m_elements[m_open.back() - 1]; }
  void NoteTheEnd();
  void Forget();
  bool Report(XmlFault fault, const char* place);

  XmlElement& m_root;
  // Below the root: each open element, and behind it those of its children that are closed, with all that is theirs. An element
  // moves once, to its parent when that is closed.
  std::vector<XmlElement> m_elements;
  // Where the children of each open element begin in m_elements, innermost last; it stands just before them. 0 is the root.
  std::vector<std::size_t> m_open;
  const char* m_begin = nullptr;
  const char* m_cursor = nullptr;
  const char* m_end = nullptr;
  std::vector<Found> m_found;  // attributes of the tag at hand
  XmlReport m_report;
};
