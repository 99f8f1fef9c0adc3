// Identifiers: the name of a data item as numbers, as text and as bytes.
#include <cstdio>

#include "zelbase/data/CDataId.h"
#include "zelbase/files/CharBuffer.h"

int main() {
  const CDataId depth(5, 1002, 3, 1);  // type 5, group 1002, device 3, vessel 1
  std::printf("key %s, %s\n", depth.GetKey().c_str(), depth.IsComputation() ? "computed" : "measured");

  CDataId fromText;
  if (fromText.SetFromKey("5,1,1002,3")) std::printf("the same: %s\n", fromText == depth ? "yes" : "no");
  std::printf("three numbers: %s\n", fromText.SetFromKey("5,1,1002") ? "read" : "refused");
  return 0;
}

// Prints:
//   key 5,1,1002,3, computed
//   the same: yes
//   three numbers: refused
