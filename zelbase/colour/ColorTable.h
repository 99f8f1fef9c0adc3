// A table from numbers to colours: a depth, a difference in height or the number of a file takes the colour and the
// name of its step; also the conversions between colour models. Neighbours: COLORREF.h, the colour itself;
// FileObject.h, the settings text that a table is read from and written to.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "zelbase/colour/detail/ColorLookupSlot.h"
#include "zelbase/platform/COLORREF.h"
#include "zelbase/platform/ZelBaseApi.h"

class FileObject;

// The colour below the first entry of a new table: black.
inline constexpr COLORREF LOWCOLOR_DEFAULT = 0;

// A step table. Each entry holds a value and a colour, and a number takes the colour of the highest entry that is not
// above it. Numbers below the first entry take the low colour, numbers above the last entry the last colour.
//
//   ColorTable table;
//   table.SetRange(0.0, 10.0, 2.0, 0xFF0000u, 0x0000FFu);   // entries at 0, 2, 4, 6, 8, 10; blue to red
//   COLORREF color = table.GetColor(depth);
//   table.GetColors(row, colors);                           // a whole row at once
//
// A colour is an unsigned 32-bit number, red in the low byte, then green, then blue, 0 in the top byte: 0xFF0000 is
// blue.
//
// What surprises:
// (1) A number exactly equal to an entry may take the colour of the entry BEFORE it: it depends on the place where the
//     search meets the entry. On {40, 41, 42, 82, 92, 102} GetColor(41) is the colour of 40, and GetName(41) the name
//     of 41. Pictures in use were drawn by this rule.
// (2) The third argument chooses between two meanings: SetRange(0.0, 10.0, 2.0, ...) has steps of 2.0,
//     SetRange(0.0, 10.0, 2, ...) makes two colours. The fourth and fifth choose, too: unsigned numbers are colours,
//     bools a scheme. A literal colour needs its "u", or the call is ambiguous.
// (3) Entries are in ascending order, equal values allowed; InsertEntry puts an equal one in front, AddEntry refuses
//     it. A value that is not a number can be brought in, and then the order is the one that the walks described below
//     give.
// (4) In HSV the colours at the ends are not those that were given: both go through the correction of the rainbow.
//
// Failure: nothing is reported and nothing throws (but std::bad_alloc). An index outside the table reads 0, an empty
// text or false, and changes nothing. Runs of more than MOST_RUN_ENTRIES entries, or whose number of entries is not a
// number, add none.
//
// A look-up costs the logarithm of the number of entries. After a thousand look-ups, and as many as there are entries,
// without a change between, the table makes an index of its own, and they cost a few nanoseconds, with the same
// answers. It makes none when values are equal, out of order or not finite.
//
// Copies copy everything. Threads: no lock. Several threads may look up at once while nobody changes the table;
// FileSave counts as a change, for it sets HasOpened.
class ZELBASE_API ColorTable {
 public:
  ColorTable() = default;
  ColorTable(const ColorTable&) = default;
  ColorTable(ColorTable&&) = default;
  ColorTable& operator=(ColorTable&&) = default;
  // Without memory std::bad_alloc passes and the table is as it was.
  ColorTable& operator=(const ColorTable& other) { return *this = ColorTable(other); }

  // The most entries that one run of a generator makes, and the most colours of one band or of MakeFileColors.
  static constexpr int MOST_RUN_ENTRIES = 65536;

  // The hue as the eye sees it, for NiceRainbowCorrection. Index i stands for the hue i * 1.2 degrees, the value is the
  // corrected hue as a fraction of the full circle. The small irregularities are part of the table.
  static constexpr double m_hueLookup[201] = {0.000, 0.002, 0.006, 0.008, 0.012, 0.015, 0.018, 0.021, 0.024, 0.027,  // 0
                                              0.030, 0.033, 0.036, 0.039, 0.042, 0.045, 0.048, 0.050, 0.054, 0.056,  // 10
                                              0.060, 0.062, 0.066, 0.068, 0.072, 0.074, 0.078, 0.080, 0.084, 0.086,  // 20
                                              0.090, 0.093, 0.096, 0.099, 0.102, 0.105, 0.107, 0.110, 0.112, 0.115,  // 30
                                              0.116, 0.119, 0.119, 0.122, 0.122, 0.125, 0.124, 0.127, 0.125, 0.128,  // 40
                                              0.124, 0.130, 0.128, 0.131, 0.129, 0.132, 0.131, 0.134, 0.133, 0.136,  // 50
                                              0.135, 0.139, 0.138, 0.144, 0.141, 0.145, 0.145, 0.148, 0.149, 0.152,  // 60
                                              0.154, 0.156, 0.157, 0.160, 0.161, 0.164, 0.165, 0.168, 0.169, 0.172,  // 70
                                              0.173, 0.176, 0.177, 0.180, 0.181, 0.184, 0.185, 0.188, 0.189, 0.192,  // 80
                                              0.193, 0.196, 0.197, 0.200, 0.201, 0.204, 0.206, 0.209, 0.214, 0.218,  // 90
                                              0.225, 0.228, 0.238, 0.242, 0.254, 0.257, 0.271, 0.274, 0.289, 0.292,  // 100
                                              0.307, 0.311, 0.324, 0.328, 0.340, 0.343, 0.353, 0.357, 0.366, 0.370,  // 110
                                              0.378, 0.381, 0.389, 0.392, 0.398, 0.402, 0.402, 0.411, 0.416, 0.419,  // 120
                                              0.424, 0.428, 0.433, 0.436, 0.441, 0.445, 0.450, 0.453, 0.458, 0.461,  // 130
                                              0.466, 0.470, 0.475, 0.478, 0.484, 0.487, 0.492, 0.495, 0.501, 0.504,  // 140
                                              0.509, 0.512, 0.518, 0.521, 0.526, 0.529, 0.534, 0.537, 0.542, 0.545,  // 150
                                              0.549, 0.552, 0.556, 0.559, 0.562, 0.566, 0.569, 0.572, 0.574, 0.578,  // 160
                                              0.580, 0.583, 0.586, 0.589, 0.592, 0.595, 0.597, 0.601, 0.603, 0.607,  // 170
                                              0.609, 0.614, 0.615, 0.618, 0.621, 0.624, 0.626, 0.630, 0.632, 0.635,  // 180
                                              0.638, 0.641, 0.644, 0.643, 0.649, 0.653, 0.655, 0.658, 0.661, 0.664,  // 190
                                              0.667};

  // --- Fields ------------------------------------------------------------------------------------------------------

  // True after a FileOpen that read its file to the end, and after a FileSave that succeeded; Clear makes it false.
  bool HasOpened() const;

  // Colour and name of the numbers below the first entry.
  COLORREF LowColor() const;
  void SetLowColor(COLORREF color);
  std::string LowColorName() const;
  void SetLowColorName(std::string name);

  // Whether this is a table for dredge differences: what FileSave writes the section "DredgeDiff" for, and what
  // FileOpen makes true when that section exists. At first false.
  bool HasDredgeDiffSection() const;
  void SetDredgeDiffColTab(bool isDredgeDiff);

  // Differences from under limit upwards are under dredged, from over limit downwards over dredged, between them in
  // tolerance (metres in the suite). At first 0.5 and -0.5. GenerateDredgeDiffColorTable may change them.
  void GetUnderDredgeLimit(double& limit) const;
  void GetOverDredgeLimit(double& limit) const;
  void SetUnderDredgeLimit(double limit);
  void SetOverDredgeLimit(double limit);

  // Whether the host takes the limits from the design; only kept here. At first false.
  void GetSyncWithDesignModel(bool& sync) const;
  void SetSyncWithDesignModel(bool sync);

  // The colours at the lower and the upper end of each band, and how many steps lie between them: at first 5 each, from
  // 0xC0C0C0 to 0x808080 under dredge, 0x00FFFF to 0x00FF00 in tolerance, 0x0000C8 to 0x0000FF over dredge.
  void GetUnderDredgeColorRange(COLORREF& min, COLORREF& max, unsigned int& count) const;
  void GetInTolColorRange(COLORREF& min, COLORREF& max, unsigned int& count) const;
  void GetOverDredgeColorRange(COLORREF& min, COLORREF& max, unsigned int& count) const;
  void SetUnderDredgeColorRange(COLORREF min, COLORREF max, unsigned int count);
  void SetInTolColorRange(COLORREF min, COLORREF max, unsigned int count);
  void SetOverDredgeColorRange(COLORREF min, COLORREF max, unsigned int count);

  // --- Entries -----------------------------------------------------------------------------------------------------

  int NumEntries() const;
  double EntryValue(int index) const;
  COLORREF EntryColor(int index) const;
  std::string EntryName(int index) const;

  // A locked entry stays when SetRange, SetRangeRGB or SetRangeRGB3 make the table anew.
  bool EntryLocked(int index) const;

  // How many are locked.
  int NumLocked() const;

  // True; false for an index outside the table.
  bool SetEntryColor(int index, COLORREF color);
  bool SetEntryName(int index, std::string name);

  // False, and nothing changed, when the entry before holds a value greater than or equal to `value`, or the entry
  // after one less than or equal to it: so an edit keeps the order strict. NaN is neither, and goes in.
  bool SetEntryValue(int index, double value);

  // Walks from the first entry and inserts, with an empty name, before the first that is not below `value`: in FRONT of
  // an equal one. NaN goes to the very front, and nothing passes a NaN. Gives the index.
  int InsertEntry(double value, COLORREF color, bool locked);

  // Appends when the table is empty or its last value is strictly below `value`; otherwise false, and nothing is added.
  bool AddEntry(double value, COLORREF color, bool locked, std::string name);

  void RemoveEntry(int index);

  // Makes the low colour 0. Drops all entries, or only those that are not locked.
  void ClearEntries(bool all);

  // No entries, low colour 0 without a name, HasOpened false. All that belongs to dredging stays.
  void Clear();

  // --- Look-up -----------------------------------------------------------------------------------------------------

  // The colour of `value`, by the rule at the top. An empty table gives the low colour. NaN gives the low colour; in a
  // table of a single entry its colour. With n entries:
  //   g = (value - first value) * (n - 1) / (last value - first value), or 0 when these are equal. Not a number or
  //   below 0: the low colour. n - 1 or more: the last colour. Otherwise, i being g without its fraction, the search is
  //   FindColor(value, i + 1, n - 1) when `value` is not below the value at i + 1, else FindColor(value, 0, i).
  // So a table of equal values gives its last colour at that value and above; and a number that lies below the last
  // entry by no more than g is rounded has the last colour already.
  COLORREF GetColor(double value) const;

  // GetColor of each value, the fast way to colour a row. When the lengths differ, as many as the shorter has; the rest
  // of `colors` is untouched.
  void GetColors(std::span<const double> values, std::span<COLORREF> colors) const;

  // As GetColor, with FindName; but in a table of equal values the value itself has the low colour's name (the quotient
  // is 0 / 0), and only what is above it the last name.
  std::string GetName(double value) const;

  // --- Generation --------------------------------------------------------------------------------------------------
  //
  // SetRange, SetRangeRGB and SetRangeRGB3 replace all entries that are not locked. With n = ceil((max - min) / step) +
  // 2, truncated, the two-colour forms make n - 1 entries, the three-colour forms n - 2, at min, min + step, min + 2 *
  // step and so on; the last entry of the two-colour forms is the first multiple at or above `max`. n below 3 makes
  // none, and only drops the old ones and sets the low colour. When `step` is 0 or `max` equals `min` there is one
  // entry at `min` with the colour `high`, as it is. A step of the same sign as max - min is meant; both may be
  // negative.
  //
  // The first entry is already one step away from the colour `low`, which is the low colour.
  //
  // Forms with a count: step = (max - min) / (the larger of count and 3, less 2). Mostly that makes count - 1 entries;
  // where the rounded quotient is a little more than a whole number, one more.

  // Through HSV: saturation and value go straight, the hue goes the short way round the circle when the hues differ by
  // at most 25 or at least 335 degrees, otherwise the LONG way (half the circle as it is), which shows more colours. A
  // grey takes the hue of the other end. Low colour and entries go through NiceRainbowCorrection.
  void SetRange(double min, double max, double step, COLORREF low, COLORREF high);
  void SetRange(double min, double max, int count, COLORREF low, COLORREF high);

  // Ready schemes, low to high, by (a, b): false, false: black to white; true, false: blue to red; false, true: white
  // to black; true, true: red to blue.
  void SetRange(double min, double max, double step, bool a, bool b);
  void SetRange(double min, double max, int count, bool a, bool b);

  // Straight through red, green and blue, each truncated; no correction.
  void SetRangeRGB(double min, double max, double step, COLORREF low, COLORREF high);
  void SetRangeRGB(double min, double max, int count, COLORREF low, COLORREF high);

  // The same in two halves, low to mid in n / 2 - 1 entries and mid to high in the others.
  void SetRangeRGB3(double min, double max, double step, COLORREF low, COLORREF mid, COLORREF high);
  void SetRangeRGB3(double min, double max, int count, COLORREF low, COLORREF mid, COLORREF high);

  // Replaces what lies within [min, max], locked or not, by a run as SetRangeRGB's (`rgb`) or SetRange's; all else
  // stays. The low colour becomes `low`, uncorrected, when no entry is left or `min` is not above the first one. With a
  // step of 0 or `max` equal to `min` nothing at all is done; with a step of the wrong sign everything but adding is
  // done. The last entry may lie above `max`, in front of an old one of the same value.
  void AddRange(double min, double max, double step, COLORREF low, COLORREF high, bool rgb);
  void AddRange(double min, double max, int count, COLORREF low, COLORREF high, bool rgb);
  void AddRange3(double min, double max, double step, COLORREF low, COLORREF mid, COLORREF high);
  void AddRange3(double min, double max, int count, COLORREF low, COLORREF mid, COLORREF high);

  // Clears, then count - 1 entries whose values go from 1 to `maximum` in equal ratios; blue to red when `rainbow`,
  // otherwise black to white, by SetRange. No entries for a maximum of 0 or less, or a count of 2 or less (unless the
  // maximum is 1).
  void SetLogRange(double maximum, int count, bool rainbow);

  // A colour for each of `count` files: the first has the low colour, file number 2, 3, ... the entry of that value.
  // Beyond 12 files the colours come again: 13 has the low colour, each further one that of the number 11 less; the
  // colour of 2 does not come again. A count below 2: no entries, the low colour is `first` uncorrected. Ends at
  // MOST_RUN_ENTRIES entries.
  void MakeFileColors(int count, COLORREF first, COLORREF last);

  // Makes the table from the three bands; all old entries go, locked ones too. Entries are unlocked. An over limit
  // above 0 is negated, limits in the wrong order change places, and both are kept so. N being the number of colours of
  // a band:
  //   under dredge  N >= 2: from under limit up in steps of 2.0 / (N - 1). N < 2: one, at the limit
  //   in tolerance  N >= 3: from over limit up in steps of (under - over) / N. N = 2: at 0.0 and at over limit. N < 2:
  //                 one, at over limit. None at all when the limits are equal
  //   over dredge   N >= 2: N - 1 from over limit - 2.0 up in steps of 2.0 / (N - 1), beginning with the second colour;
  //                 the first is the low colour. N < 2: none, the low colour is the colour at the upper end
  // A band of more than MOST_RUN_ENTRIES colours adds none.
  void GenerateDredgeDiffColorTable();

  // --- Colour models -----------------------------------------------------------------------------------------------
  //
  // Hue h of HSV in degrees [0, 360), -1 for a grey; h of HSL as a fraction [0, 1]; s, v and l in [0, 1]. What is above
  // 1 counts as 1. A channel is truncated to a byte; below 0 and not a number give 0.

  // Black for a hue below 0 (but -1) and from 360 on. -1 gives the grey of `v`, whatever `s` is.
  static COLORREF HSVtoRGB(double h, double s, double v);
  static void RGBtoHSV(COLORREF color, double& h, double& s, double& v);

  static COLORREF HSLtoRGB(double h, double s, double l);

  // A grey has hue 0 and saturation 0.
  static void RGBtoHSL(COLORREF color, double& h, double& s, double& l);

  // The grey of green * 0.59 + red * 0.3 + blue * 0.11, truncated: 67 of the 256 greys come out one darker.
  static COLORREF ColorToGray(COLORREF color);

  // White on a colour whose sum, as above, is at most 127.5, black on the others.
  static COLORREF GetContrastColor(COLORREF color);

  // The sum of each channel, at most 255.
  static COLORREF AddColors(COLORREF a, COLORREF b);

  // The colour with its lightness in HSL times `factor`.
  static COLORREF ScaleIntensity(COLORREF color, double factor);

  // --- Files -------------------------------------------------------------------------------------------------------
  //
  // Sections "Values", "Colors", "Locks", "Names", with the keys "0", "1", ...; "ALowColor" in "Colors" and "Names" is
  // what lies below the first entry; "DredgeDiff" has what belongs to dredging. A colour is "red, green, blue".

  // Reads a table. False when an entry's colour is missing or is not three numbers: then the entries before it are in
  // the table, and HasOpened and what belongs to dredging are as they were. The list of entries ends, without failure,
  // at the first value that is missing or does not parse. An entry out of order is dropped. The low colour's name stays
  // when the file has none, or an empty one. Numbers of a colour are taken modulo 256.
  //
  // Never throws what GetItem throws under ThrowExceptions.
  bool FileOpen(const FileObject& settings);

  // Writes a table into `settings`. False at the first entry that cannot be written; the section "DredgeDiff" is
  // written only for a dredge difference table, and its failures are ignored. Clears nothing: the rows of an older,
  // longer table stay, and are read again with this one. Values go through FileObject's item of double, which keeps up
  // to 16 decimals.
  bool FileSave(FileObject& settings) const;

 protected:
  // The search of GetColor from index `low` to `high`, both within the table. Repeats: the value at `high` not above
  // `value` gives the colour at `high`; otherwise with mid = low + (high - low) / 2, truncated, `high` becomes mid - 1
  // when the value at mid is greater than OR EQUAL to `value`, else `low` becomes mid and `high` goes down by one. The
  // low colour for an index outside the table, and where values that are not numbers leave nothing to find.
  COLORREF FindColor(double value, int low, int high) const;

  // The search of GetName: at mid it goes below only when `value` is strictly below. Otherwise as FindColor.
  std::string FindName(double value, int low, int high) const;

  // One channel of HSLtoRGB; `h` may lie up to 1 outside [0, 1].
  static double Hue_2_RGB(double a, double b, double h);

  // Spreads the hues as the eye sees them; only `h` (degrees, below 360) changes, and a negative one stays.
  static void NiceRainbowCorrection(double& h, double& s, double& v);

 private:
  // One of the three bands of dredging.
  struct DredgeBand {
    COLORREF minColor;
    COLORREF maxColor;
    unsigned int numColors;

    void Get(COLORREF& min, COLORREF& max, unsigned int& count) const;
    COLORREF Color(int k) const;  // number k of the band, from the lower end
  };

  // What a generator makes before it goes into the table.
  struct RunEntry {
    double value;
    COLORREF color;
  };
  using Run = std::vector<RunEntry>;

  static COLORREF NiceColor(double h, double s, double v);
  static Run HsvRun(double min, double max, double step, COLORREF low, COLORREF high);
  static Run RgbRun(double min, double max, double step, COLORREF low, COLORREF high);
  static Run Rgb3Run(double min, double max, double step, COLORREF low, COLORREF mid, COLORREF high);

  static std::size_t Place(int index) { return static_cast<std::size_t>(index); }

  bool HasEntry(int index) const;
  double Span() const;
  double Guess(double value) const;
  int GuessedIndex(double guess) const;
  int FindColorIndex(double value, int low, int high) const;
  int FindNameIndex(double value, int low, int high) const;
  int ColorIndex(double value) const;
  int NameIndex(double value) const;
  COLORREF ColorAt(int index) const;
  std::string NameAt(int index) const;
  const zelbase::detail::ColorLookup* LookupFor(std::size_t numLookups) const;
  std::unique_ptr<const zelbase::detail::ColorLookup> MakeLookup() const;
  bool HasPlainSteps() const;
  double FirstOfLastColor() const;

  void PushEntry(double value, COLORREF color, bool locked, std::string name);
  void RemoveEntries(const std::vector<bool>& dropped);
  void InsertRun(Run run);
  void ReplaceUnlocked(double min, double max, double step, COLORREF low, COLORREF high, Run run);
  void ReplaceWithin(double min, double max, double step, COLORREF low, Run run);
  void AppendFileColors(int numEntries);
  void PutLimitsInOrder();
  void AppendUnderDredgeBand(Run& run) const;
  void AppendToleranceBand(Run& run) const;
  void AppendOverDredgeBand(Run& run);

  bool OpenEntries(const FileObject& settings);
  void OpenDredgeDiff(const FileObject& settings);
  bool SaveEntry(FileObject& settings, int index) const;
  void SaveDredgeDiff(FileObject& settings) const;

  DredgeBand m_underDredge{0xC0C0C0, 0x808080, 5};
  DredgeBand m_inTolerance{0x00FFFF, 0x00FF00, 5};
  DredgeBand m_overDredge{0x0000C8, 0x0000FF, 5};
  bool m_syncWithDesign = false;
  double m_underDredgeLimit = 0.5;
  double m_overDredgeLimit = -0.5;
  bool m_isDredgeDiff = false;
  COLORREF m_lowColor = LOWCOLOR_DEFAULT;
  std::string m_lowColorName;
  mutable bool m_hasOpened = false;

  // Parallel.
  std::vector<double> m_values;
  std::vector<COLORREF> m_colors;
  std::vector<bool> m_locked;
  std::vector<std::string> m_names;

  // Of the values, colours and the low colour: whatever changes these forgets it.
  zelbase::detail::ColorLookupSlot m_lookup;
};
