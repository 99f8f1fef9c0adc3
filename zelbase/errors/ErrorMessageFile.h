// The file in which the messages of errors find their wording, so that it can change without a new build. Neighbours:
// ErrorWording.h, the door through which errors ask; zelbase/units/Translator.h, which may have the words in another language.
#pragma once

#include <memory>
#include <string>

#include "zelbase/concurrency/Locker.h"
#include "zelbase/config/FileObject.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"

// The one file of wordings of the process: settings text with the sections "File Error", "FileError", "FileObject Error" and
// "Dax Error", whose keys stand beside the operations of these errors. It is the host that opens it:
//
//   ErrorMessageFile::Get().Open(folder + "ErrorMessages.ini");
//
// As long as nothing is open, and for what the file does not have, errors use their built-in texts.
//
// Threads: any thread may call anything. No lock is held while the file is read, while a failure is reported or while the
// Translator is asked, so that a reporter may format errors, and wait for others that do. The object stays until the
// process has ended.
class ZELBASE_API ErrorMessageFile {
 public:
  // The one object, made at first use. Nothing is open then.
  static ErrorMessageFile& Get();

  ErrorMessageFile(const ErrorMessageFile&) = delete;
  ErrorMessageFile& operator=(const ErrorMessageFile&) = delete;

  // Reads `fileName`, others denied writing meanwhile, and makes errors ask here (ErrorWording::Install). What was open is
  // gone whatever comes of it. False: an empty name; or a file that does not open, which enters a FileError under "General",
  // formatted with no file open. Throws the CFileException of a read that fails midway, and std::bad_alloc; nothing is open then.
  bool Open(const std::string& fileName);

  // Whether a file is open; one without any section is.
  bool IsOpen() const;

  // The wording of `key` in `section`: the Translator's, when the language is foreign and it has one, otherwise the
  // file's, which may be empty. False, `text` untouched, when the file does not have it, whatever the Translator has.
  bool Get(const std::string& section, const std::string& key, std::string& text) const;

 private:
  ErrorMessageFile();
  ~ErrorMessageFile() = default;

  bool Find(const std::string& section, const std::string& key, std::string& text) const;
  void Exchange(std::unique_ptr<FileObject> file);

  mutable Locker m_lock;
  std::unique_ptr<FileObject> m_file ZELBASE_GUARDED_BY(m_lock);
};
