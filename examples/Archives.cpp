// Archives: the data items that a user chose for a display, written to an archive and read back; a list that ends too early changes
// nothing.
#include <cstdio>

#include "zelbase/data/CDataInfoArray.h"
#include "zelbase/platform/CArchive.h"
#include "zelbase/platform/CArchiveException.h"
#include "zelbase/platform/CSharedFile.h"

int main() {
  const CDataId sonar(5, 1002, 3, 1);  // type 5, group 1002, device 3, vessel 1
  CDataInfoArray chosen;
  chosen.Add(CDataInfoEx(sonar, 7, 65535, false, "Depth below the keel", true, DATATEXTATTRIBS(), 0));
  CDataInfoEx line;
  line.SetSeparator();
  chosen.Add(line);
  chosen.Add(CDataInfoEx(sonar, 8, 2, false, "Third temperature", false, DATATEXTATTRIBS(), 1));

  CSharedFile file;  // a CFile does as well
  CArchive storing(&file, CArchive::store);
  chosen.Serialize(storing);
  storing.Close();
  std::printf("%llu bytes\n", file.GetLength());

  file.SeekToBegin();
  CArchive loading(&file, CArchive::load);
  CDataInfoArray read;
  read.Serialize(loading);
  loading.Close();
  for (int i = 0; i < read.GetSize(); ++i) {
    const CDataInfoEx& item = read[i];
    std::printf("%s\n", item.IsSeparator() ? "----" : (item.GenerateString() + " " + item.GetUserDescription()).c_str());
  }

  file.SetLength(100);
  file.SeekToBegin();
  CArchive broken(&file, CArchive::load);
  try {
    read.Serialize(broken);
  } catch (const CArchiveException&) {
    std::printf("it ends too early: still %d items\n", read.GetSize());
  }
  return 0;
}

// Prints:
//   246 bytes
//   5,1,1002,3,7 Depth below the keel
//   ----
//   5,1,1002,3,8,2 Third temperature
//   it ends too early: still 3 items
