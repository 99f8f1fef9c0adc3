// What a host does first: settings from text, a value with its unit, a line clipped to a page, XML.
#include <cstdio>
#include <string>

#include "zelbase/frame/ZelBase.h"

int main() {
  FileObject settings;
  double draught = 0.0;
  settings.SetItem("Vessel", "Draught", 2.75, true);
  settings.GetItem("Vessel", "Draught", draught);

  const Page page(0.0, 0.0, 10.0, 10.0);
  Line line(Point(-5.0, 5.0, 0.0), Point(15.0, 5.0, 0.0));
  const bool seen = page.ClipLine(line);

  XmlElement vessel("Vessel");
  vessel.SetAttribute("Name", "Zeearend");
  std::string name;
  vessel.GetAttribute("Name", name);

  std::printf("%s draws %.2f m; the line is %s, %.1f m of it\n", name.c_str(), draught, seen ? "seen" : "hidden", line.Length());
  return 0;
}
