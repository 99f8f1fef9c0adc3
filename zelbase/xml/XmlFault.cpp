#include "zelbase/xml/XmlFault.h"

const char* XmlFaultText(XmlFault fault) {
  switch (fault) {
    case XmlFault::None: return "";
    case XmlFault::CannotOpen: return "the file cannot be opened";
    case XmlFault::TooLarge: return "the file is too large";
    case XmlFault::CannotRead: return "the file cannot be read";
    case XmlFault::EmptyTag: return "the tag is empty";
    case XmlFault::NoTagName: return "the tag has no name";
    case XmlFault::SecondRoot: return "there is an element beside the root";
    case XmlFault::NothingToClose: return "there is no open element to close";
    case XmlFault::WrongClosingName: return "the closing name is not that of the open element";
    case XmlFault::AttributeWithoutName: return "there is no attribute name before =";
    case XmlFault::AttributeWithoutBlank: return "there is no blank before the attribute name";
    case XmlFault::AttributeWithoutQuotes: return "the attribute value is not in double quotes";
    case XmlFault::UnknownAttributeReference: return "the attribute value has an unknown reference";
    case XmlFault::AttributeNamesTooLong: return "the attribute names of the tag are too long";
    case XmlFault::UnknownTextReference: return "the text has an unknown reference";
    case XmlFault::UnfinishedTag: return "the text ends within a tag";
    case XmlFault::ElementsLeftOpen: return "the text ends before the root was closed";
    case XmlFault::NoElement: return "the text has no element";
  }
  return "";
}
