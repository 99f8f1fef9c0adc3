// Any bytes as XML text, beside a second reader and writer that must agree; what is read is copied, compared, written and
// read again.

#include <cstdint>
#include <sstream>
#include <string>

#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "tests/xml/LiteralXml.h"
#include "zelbase/xml/XmlElement.h"
#include "zelbase/xml/XmlFault.h"
#include "zelbase/xml/XmlReader.h"
#include "zelbase/xml/XmlWriter.h"

namespace {

// The second reader is slow in the number of attributes and recurses by depth.
constexpr std::size_t kLongest = 20000;

void WriteAndReadAgain(const XmlElement& root, const LiteralXml& literal) {
  std::ostringstream stream;
  Require(XmlWriter(root).WriteStream(stream) == root.HasName(), "writing is refused without a name only");
  const std::string text = stream.str();
  if (!root.HasName()) return Require(text.empty(), "nothing is written then");
  Require(text == LiteralXmlWriter::Write(literal), "what is written");
  LiteralXml again;
  XmlElement element;
  const bool expected = LiteralXmlReader::Read(text, again);
  Require(XmlReader(element).ReadData(text.data(), static_cast<unsigned int>(text.size())) == expected, "the second answer");
  Require(IsSame(element, again), "the second tree");
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  if (size > kLongest) return;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  LiteralXml literal;
  const bool expected = LiteralXmlReader::Read(bytes, literal);

  XmlElement root("former");
  XmlReader reader(root);
  Require(reader.ReadData(reinterpret_cast<const char*>(data), static_cast<unsigned int>(size)) == expected, "the answer");
  Require(IsSame(root, literal), "the tree");
  const XmlFault fault = reader.LastReport().fault;
  Require(expected == (fault == XmlFault::None || fault >= XmlFault::UnknownTextReference), "the reason");
  Require(*XmlFaultText(fault) != '\0' || fault == XmlFault::None, "the words");

  XmlElement copy(root);
  Require(copy == root, "the copy");
  WriteAndReadAgain(copy, literal);
  copy.Add("more");
  Require(!(copy == root), "the changed copy");
}
