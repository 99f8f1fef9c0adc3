// Turns an element tree into XML text. Neighbours: XmlElement.h, the tree; XmlReader.h, the way back.
#pragma once

#include <iosfwd>

#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/xml/XmlElement.h"

//   XmlWriter(root).WriteFile(name);
//
//   <?xml version="1.0"?>
//   <survey>
//           <vessel name="Zuiderkruis"/>
//           <note>two <b>words</b> here</note>
//   </survey>
//
// Lines end in CR LF, and each level is indented by one tab. An element with a text, or with a child without a name, is
// written in one run with all that is below it, so that mixed content gets no blanks. Quotes, apostrophes, "&", "<" and ">"
// in texts and values become references; names and all other bytes go out as they are.
//
// Kept: of a child without a name only the text is written, never its attributes and children. An element with one such child
// that is empty is "<a></a>", not "<a/>".
//
// Depth takes no stack. Indenting d levels takes d tabs: a tree of nothing but elements nested d deep is a text of d * d bytes.
// The tree must outlive the writer, and must not change meanwhile. One thread at a time.
class ZELBASE_API XmlWriter {
 public:
  explicit XmlWriter(const XmlElement& root) : m_root(root) {}

  // False, with nothing written, for a root without a name; false when the stream has failed. The stream is flushed, so that a
  // full disk is noticed here. Formatting flags of the stream are without effect.
  bool WriteStream(std::ostream& stream) const;

  // Makes the file, or writes over it. Kept: a root without a name leaves it there with nothing in it, and false.
  bool WriteFile(const char* path) const;

 private:
  class Sink;
  class StreamSink;
  class FileSink;
  class Output;
  class Document;

  bool Write(Sink& sink) const;

  const XmlElement& m_root;
};
