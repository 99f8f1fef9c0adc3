// The settings file that says which displays an application shows: a section for each view type. Neighbours: FileObject.h,
// the store that it is; frame/KeyTables.h, whose viewTypeKeys are the names that count.
#pragma once

#include <string>

#include "zelbase/config/FileObject.h"
#include "zelbase/platform/ZelBaseApi.h"

// A FileObject that tells, after reading, of a section that is no known view type, and remembers one error until it is
// fetched.
//
//   DisplaysFile displays;
//   if (!displays.ReadFromDisk(fileName)) {
//     DisplaysFile::ERRINFO error;
//     displays.GetError(error);    // and then go on or not: what was read is there
//   }
//   if (displays.IsPresent("PlanView")) ...
//
// The error record:
//   code  name                     set by
//   0     empty                    a new object, GetError
//   1     as it was before         a file that does not open; also entered into the global error list (FileObject::FileOpen)
//   2     the unknown section      a section that matches no row of viewTypeKeys exactly; the last one of the walk
// Nothing but GetError goes back to 0: an error that was not fetched makes a later, clean reading return false, too, and a name
// that was not fetched stands beside a later code 1.
//
// A copy has the error record as well. Threads, statuses and exceptions are those of FileObject.
class ZELBASE_API DisplaysFile : public FileObject {
 public:
  // An error as GetError gives it.
  struct ERRINFO {
    int code = 0;
    std::string name;
  };

  DisplaysFile();
  ~DisplaysFile() override;
  DisplaysFile(const DisplaysFile& other);

  // Assigning an object to itself empties it, as in FileObject, and keeps the error record.
  DisplaysFile& operator=(const DisplaysFile& other);

  // Opens and reads the file, denying others to write meanwhile. True when no error is on record afterwards. A file with an
  // unknown section stays loaded with all its sections; a file with no section at all is a good one. Throws the
  // CFileException of a read that fails midway.
  bool ReadFromDisk(const std::string& fileName);

  // Whether there is a section of that name; the section "Checksum" is never present.
  bool IsPresent(const std::string& section) const;

  // Whether the section has the key, also with an empty value, unlike HasKey. Here the section "Checksum" counts like any
  // other.
  bool IsPresent(const std::string& section, const std::string& key) const;

  // Hands the error record over and sets it back: an error is fetched once.
  void GetError(ERRINFO& info);

 private:
  int m_errorCode = 0;
  std::string m_errorName;
};
