// XML: a tree built, written, read back and asked.
#include <cstdio>
#include <sstream>
#include <string>

#include "zelbase/xml/XmlElement.h"
#include "zelbase/xml/XmlReader.h"
#include "zelbase/xml/XmlWriter.h"

int main() {
  XmlElement project("project");
  XmlElement& survey = project.Add("survey");
  survey.SetAttribute("area", "channel & basin");
  survey.Add("lines").SetText("42");

  std::ostringstream out;
  if (!XmlWriter(project).WriteStream(out)) return 1;
  const std::string text = out.str();
  XmlElement read;
  if (!XmlReader(read).ReadData(text.data(), static_cast<unsigned int>(text.size()))) return 1;
  const XmlElement* const found = read.Find("survey", 0);
  std::string area;
  XmlElement::GetAttribute(found, "area", area);
  std::string lines;
  XmlElement::GetText(XmlElement::Find(found, "lines", 0), lines);
  std::printf("%s: %s lines\n", area.c_str(), lines.c_str());
  return 0;
}

// Prints:
//   channel & basin: 42 lines
