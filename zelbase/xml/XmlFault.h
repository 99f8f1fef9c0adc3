// Why a reading of XML text was refused, or ended before the end of the text, and where. Neighbour: XmlReader.h, whose operations
// answer by bool and give this on request.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

enum class XmlFault : int {
  None = 0,

  // The reading was refused: false, and the target is empty.
  CannotOpen,                 // no such file, no right to it, or not a regular file
  TooLarge,                   // 4 GiB or more
  CannotRead,                 // the file ended or failed in the middle; or null for data
  EmptyTag,                   // "<>"
  NoTagName,                  // a blank or "/" where the name belongs
  SecondRoot,                 // a second element beside the root
  NothingToClose,             // a closing tag without an open element
  WrongClosingName,           // not the name of the innermost open element
  AttributeWithoutName,       // nothing before "="
  AttributeWithoutBlank,      // no white space anywhere before its name
  AttributeWithoutQuotes,     // not two double quotes behind "="
  UnknownAttributeReference,  // "&" in a value that is not one of the five references
  AttributeNamesTooLong,      // the names within one tag sum to more than 64 MiB

  // The reading ended early, or left something open, with true: the target has what was read before.
  UnknownTextReference,  // "&" in a text that is not one of the five references
  UnfinishedTag,         // the text ends within a tag or a comment
  ElementsLeftOpen,      // the text ends before the root was closed
  NoElement              // the text has no element
};

// What a reading came upon. Line and column count from 1, the column in bytes; both are 0 for None and for a file that
// cannot be read.
struct XmlReport {
  XmlFault fault = XmlFault::None;
  unsigned int line = 0;
  unsigned int column = 0;
};

// The reason in plain words, without a full stop; "" for None and for a number without a name. Never null.
ZELBASE_API const char* XmlFaultText(XmlFault fault);
