// A file that takes the place of another one when it is whole, and otherwise goes without a trace. Neighbour: XyzCommand.cpp,
// which writes points with it; ColourFile.cpp and TideCommand.cpp for their texts.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace zel {

class OutputFile {
 public:
  // Makes a new file beside `target`, under a name that nobody has. A target that is a link means the file it leads to. One
  // that is there and is no regular file (a folder, a device, a pipe) is refused: it would be replaced by a file.
  explicit OutputFile(const std::string& target);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // False when something has failed so far.
  bool IsGood() const { return m_good; }

  void Write(std::string_view bytes);

  // Puts the file, with the permissions of the one that was there, in the target's place. False when it could not be
  // written; the target is as it was then. Nothing is written after it, and a second call gives the same answer.
  bool Finish();

 private:
  bool MakeBeside();

  std::string m_target;
  std::string m_beside;  // empty: none is there
  std::FILE* m_file = nullptr;
  bool m_good = false;
};

}  // namespace zel
