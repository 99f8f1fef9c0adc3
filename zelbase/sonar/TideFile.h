// A series of tide values by time, in memory and in a file, shared by count among the users of one object. Neighbour:
// TideFormats.h, the layouts of tide texts.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/sonar/TideFormats.h"
#include "zelbase/sonar/detail/TideSeries.h"

class HugeFileStream;

// Times are in milliseconds since 1970-01-01 00:00:00 UTC; one value a time, kept in order. A value is the height of the tide.
//
//   TideFile tide;
//   if (!tide.FileOpen(name, false)) return;
//   double time = 0.0, height = 0.0;
//   for (bool more = tide.GetFirstTideValue(time, height); more; more = tide.GetNextTideValue(time, height)) ...
//   tide.FileClose(false);
//
// The file has no header: records of 16 bytes in ascending time, each the time and the value as IEEE doubles, least byte first.
//
// The current position is on an entry or at the end, and the end at first. It belongs to the entry: adding others, or
// deleting others, leaves it there. A search in a series of millions is a matter of a few cache lines, a step to the next
// entry one of nanoseconds, and adding in the middle moves a few kilobytes.
//
// A time that is NaN has no place in the order: it is not added, it finds nothing, and a record with one is skipped.
//
// All failures are false; nothing is reported to the error lists, and arguments are as they were. The destructor saves nothing.
//
// A copy has the values, the name, the open count and whether there is something to save; its position is the end. One thread
// at a time.
class ZELBASE_API TideFile {
 public:
  TideFile() = default;
  TideFile(const TideFile& other);
  TideFile& operator=(const TideFile& other);
  ~TideFile() = default;

  // ---- File ----

  // The first user's opening reads the file, which must be writable; with `create` it is made, or cut to nothing. Values that
  // were added before stay, and those of the file are set over them. Further openings only count up.
  //
  // Kept: the name is taken over at every call, also when opening fails, and also by a further user: FileSave goes there.
  // Bytes behind the last whole record are ignored. A file that cannot be read to its end gives the front of its records.
  bool FileOpen(const std::string& name, bool create);

  // One user less; the number of users left, and 0 when there was none. The last one's closing empties the series.
  // Kept: what `save` could not save is lost then.
  int FileClose(bool save);

  // Writes all entries, if the file is open and something has changed since it was read or saved; true without touching the
  // file when nothing has. The file is replaced in one step: on false the former one is whole, as far as its folder takes a
  // second file beside it. What could not be read to its end is not written over: false. Nor is a file that another opener
  // writes to, whatever he shares, or that he lets nobody read or write.
  bool FileSave() const;

  // ---- Values: with or without a file ----

  // Adds an entry, or sets the value of the entry that has this time. False for NaN only. The position does not move.
  // Kept: setting the same value again is a change to be saved.
  bool AddTideValue(double time, double value);

  // Takes out the entry with this time. When it is the current one, the position moves on to the next; otherwise it stays,
  // also on false, which means that there is no such entry.
  bool DeleteTideValue(double time);

  // Sets the value of the entry with this time and makes it the current one; without a search when it is. On false, no such
  // entry, the position is on the first entry behind this time, or at the end.
  bool UpdateTideValue(double time, double value);

  // The value at exactly this time, nothing in between. The position goes to that entry, or to the end.
  bool GetTideValue(double time, double& value);

  // The first and last times. False only when no file is open; an empty series is true and leaves both arguments.
  bool GetTimeSpan(double& first, double& last) const;

  int GetNumValues() const;

  // ---- Walking: true delivers the entry that is then current ----

  // Search from the time given in. Without an entry the position is the end for the two forward ones.
  //
  // Kept: without an entry before it, GetValueBefore leaves the position on the first entry.
  bool GetValueBefore(double& time, double& value);
  // Kept: before the whole series this delivers the first entry, though that lies behind the time given.
  bool GetValueOnOrBefore(double& time, double& value);
  bool GetValueAfter(double& time, double& value);
  bool GetValueOnOrAfter(double& time, double& value);

  bool GetFirstTideValue(double& time, double& value);
  bool GetLastTideValue(double& time, double& value);
  // False behind the last entry, at the end.
  bool GetNextTideValue(double& time, double& value);
  // Kept: stays on the first entry and delivers it again. From the end it goes to the last.
  bool GetPreviousTideValue(double& time, double& value);
  bool GetCurrentTideValue(double& time, double& value) const;

 private:
  using Position = zelbase::detail::TideSeries::Position;

  bool Load(HugeFileStream& stream);
  bool Deliver(double& time, double& value) const;
  bool FindNothing();

  zelbase::detail::TideSeries m_values;
  mutable bool m_dirty = false;
  int m_openCount = 0;
  Position m_current;
  std::string m_fileName;
  std::string m_partlyReadFile;  // the file that has records which could not be read; empty if none
};
