// The numbers by which file operations say why they failed. They are the suite's own on every system: settings, replays
// and reconnect rules test them, so platform/ turns the system's numbers into these.
#pragma once

// 0 is success. A number of the system without a name here becomes IoFailed.
enum class FileResult : unsigned int {
  Ok = 0,
  NotFound = 2,      // no such file
  PathNotFound = 3,  // no such folder on the way
  TooManyOpenFiles = 4,
  AccessDenied = 5,   // no permission, or not a regular file
  InvalidHandle = 6,  // not open
  NotEnoughMemory = 8,
  WriteProtected = 19,    // read-only file system
  NotReady = 21,          // no medium in the drive
  SharingViolation = 32,  // somebody else holds the file in a mode that excludes this one
  UnexpectedNetwork = 59,
  NetworkNameDeleted = 64,  // connection to a network share lost
  FileExists = 80,
  InvalidParameter = 87,
  DiskFull = 112,
  InvalidName = 123,
  IoFailed = 1117,
};
