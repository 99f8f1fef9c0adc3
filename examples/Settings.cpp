// Settings: items written and read typed, a text as it lies in the file, and what two versions differ in.
#include <cstdio>
#include <string>

#include "zelbase/config/FileObject.h"

int main() {
  FileObject before;
  before.SetItem("Vessel", "Name", std::string("Zeearend"), true);
  before.SetItem("Vessel", "Draught", 2.75, true);
  before.SetItem("Logging", "Interval", 5, true);

  double draught = 0.0;
  before.GetItem("Vessel", "Draught", draught);
  std::printf("draught %.2f m\n", draught);
  int missing = 7;
  if (!before.GetItem("Vessel", "Beams", missing)) std::printf("no beams: still %d\n", missing);

  FileObject after(before);
  after.SetItem("Vessel", "Draught", 2.9, true);
  after.DeleteItem("Logging", "Interval", true);  // true: the section goes with its last item
  std::printf("%s\n", before == after ? "the same" : "they differ");
  return 0;
}

// Prints:
//   draught 2.75 m
//   no beams: still 7
//   they differ
