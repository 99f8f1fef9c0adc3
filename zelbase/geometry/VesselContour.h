// The drawn outline of a vessel: lists of points, one for each side that it is seen from, in a settings file. Neighbours:
// VesselPoint.h, a point of it; BoxComp.h, the box of a part of the vessel; config/FileObject.h, the file's format.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "zelbase/config/FileObject.h"
#include "zelbase/geometry/Page.h"
#include "zelbase/geometry/VesselPoint.h"
#include "zelbase/platform/ZelBaseApi.h"

// The outline of one side as a list of points, with the pen to draw it by and the file that holds the others. It only keeps
// what moveTo and mark say, and draws nothing.
//
//   VesselContour contour;
//   if (!contour.Create("C:\\data\\noordster.con", 0)) { ... a pointed hull of 10 by 17 stands in }
//   VesselPoint bow;
//   contour.GetPoint(1, bow);              // the first one
//   contour.SetViewSide(2);                // the left side
//   contour.Save("C:\\data\\noordster.con");
//
// The file, in the format of FileObject.h:
//
//   [DRAW]
//   PenWidth = 1                           integers
//   PenColor = 255                         red in the low byte
//   [POINTS]                               side 0, from above, and every number that is none of the others
//   Point(1) = -5.000000, -7.000000, 1     x, y, and 1 for moveTo plus 2 for mark; numbered from 1 without gaps
//   [BOTTOM POINTS]                        1, and so on: [LEFT POINTS] 2, [RIGHT POINTS] 3, [FRONT POINTS] 4, [BACK POINTS] 5
//
// Reading a point takes what it finds: "1.5" is x 1.5, y 0 and code -1, and so is "1.5 , 2, 1", since no blank may stand
// before a comma; "junk" and an empty value are a point at (0, 0). Code 1, 2 and 3 set flags, every other one, 5 and 7 too,
// sets none. The first number that is missing ends the list. z is not stored and reads as 0.
//
// What surprises:
//   (1) The file has six decimals: a change of side and back rounds the points. A coordinate that is not finite is written
//       "inf" or "nan" and does not read back: it and what stands behind it are 0, and the flags are gone.
//   (2) A side without points loses its section. Sections and first lines that this class does not know survive a save.
//   (3) An item of "DRAW" that is missing or no number leaves the field as it was; only without the section are they 1 and 0.
//   (4) A failing Create adds its six points to those that are there.
//   (5) Indexes run from 1, as in the file.
//
// The compact form, for a clipboard or a record, has 8 + 18 n bytes: pen colour and pen width as signed 32-bit numbers, then
// for each point x and y as doubles and one byte each for moveTo and mark. The low byte comes first.
//
// A copy has all of it, the file's text too (but for its section "Checksum", as with FileObject). One object belongs to one
// thread at a time.
class ZELBASE_API VesselContour {
 public:
  VesselContour();
  ~VesselContour();
  VesselContour(const VesselContour& other);
  VesselContour& operator=(const VesselContour& other);

  // --- Files -------------------------------------------------------------------------------------------------------

  // Reads the file and takes the points of that side. True when the file could be read, also when it lacks the section: the
  // list is then empty. False when it does not open (which is entered into the global error list) or a read fails midway:
  // then a pen of width 0 and colour 0, no file's text, and the points of a pointed hull, its bow at +y, behind those that
  // are there.
  bool Create(const std::string& fileName, int viewSide);

  // Puts pen and points into the file's text and writes it. False for an empty name, with nothing done, or when the file
  // cannot be written (entered into the global error list).
  bool Save(const std::string& fileName);

  // Puts the points into the file's text in memory, and takes those of the other side; only Save brings them to the disc. The
  // present side does nothing, not even read again; another number that has the same section does. Always true.
  bool SetViewSide(int viewSide);

  // --- Pen and side ------------------------------------------------------------------------------------------------

  bool GetPenColor(long& color) const;  // always true
  bool GetPenWidth(long& width) const;  // always true
  int GetViewSide() const;              // as given, also a number that is no side

  // --- Points ------------------------------------------------------------------------------------------------------

  int GetSize() const;

  // The index runs from 1 to GetSize(). Out of range: false, and nothing changes.
  bool GetPoint(int index, VesselPoint& point) const;
  bool SetPoint(int index, const VesselPoint& point);
  bool DeletePoint(int index);

  // Puts the point before the one of that index. GetSize() + 1 is out of range: the end is reached by AddPoint only.
  bool InsertPoint(int index, const VesselPoint& point);

  bool AddPoint(const VesselPoint& point);  // always true
  bool DeleteAllPoints();                   // always true

  // The page that holds all points. GetBoundingPage tells whether it is valid, which without points it is not; GetExtents
  // is always true.
  bool GetBoundingPage(Page& page) const;
  bool GetExtents(Page& page) const;

  // The middle of that page; false, with `center` untouched, when it is not valid.
  bool GetCenterPoint(Point& center) const;

  // --- The compact form --------------------------------------------------------------------------------------------

  // Always true. Without points: 8 bytes of zero, and nothing of the pen.
  bool SaveToString(std::string& text) const;

  // Takes pen and points; a rest that is no whole point is left. The side stays. False below 9 bytes: then the points are gone,
  // and the pen is as it was.
  bool LoadFromString(std::string text);

 private:
  bool OpenFile(const std::string& fileName);
  void SetDefaultContour();
  bool LoadShapeSection();
  bool SaveShapeSection();
  bool HasPoint(int index) const;

  // One value to or from `at`, which moves on; `left` counts the bytes behind it. False, with nothing moved, when it does not
  // fit.
  static bool PackDouble(double value, char*& at, std::size_t& left);
  static bool PackLong(int value, char*& at, std::size_t& left);
  static bool PackBool(bool value, char*& at, std::size_t& left);
  static bool UnPackDouble(double& value, const char*& at, std::size_t& left);
  static bool UnPackLong(int& value, const char*& at, std::size_t& left);
  static bool UnPackBool(bool& value, const char*& at, std::size_t& left);

  bool m_loaded = false;  // a list of points has been read
  int m_penWidth = 1;
  int m_penColor = 0;
  std::vector<VesselPoint> m_points;
  int m_viewSide = 0;
  FileObject m_file;
};
