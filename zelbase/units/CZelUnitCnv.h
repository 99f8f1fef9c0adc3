// The unit in which a person reads a quantity: for each of 24 kinds (depth, speed, pressure, ...) the chosen unit and the way
// there from the unit inside the suite. Neighbours: UnitDefinition.h, the catalogue of units to choose from; KeyTables.h,
// whose unitsParamKeys name the kinds.
#pragma once

#include <string>
#include <vector>

#include "zelbase/platform/ZelBaseApi.h"

// A table of 24 rows, one a kind, by number.
//
//   CZelUnitCnv units;
//   units.SetUnit(CZelUnitCnv::Depth, 0.3048, 0.0, "ft", "Foot", "International foot");
//   const double shown = units.ConvertUnit(CZelUnitCnv::Depth, 3.048);     // 10 ft
//   const double kept = units.ConvertFromUnit(CZelUnitCnv::Depth, shown);  // 3.048 m
//
// A row holds the unit factor (the size of the chosen unit in the base unit of its kind: 0.3048 for a foot when the base is
// the metre), an offset (added last, for a temperature scale), the texts, and for good the power of length in its dimension
// and whether it is tied to row 1, System Units. From these comes the conversion factor:
//
//   (1) S is the unit factor of row 1 for a row that is tied to it, 1.0 for the others.
//   (2) A unit factor of exactly 0.0 gives the conversion factor 1.0.
//   (3) Otherwise it is S / unit factor, and for a power other than 1.0 pow(S / unit factor, power).
//
// Every SetUnit computes all rows anew, so that a change of row 1 rescales all rows tied to it. Row 1 itself has 1.0
// (or NaN, for a unit factor that is infinite or NaN), row 0 has 1.0 whatever its unit factor.
//
//   Kind            Mnemonic  Power  Tied      Kind             Mnemonic  Power  Tied
//    0 No unit                 1     yes       12 Revolutions   T/min      1     no
//    1 System        m         1     yes       13 Weight        Ton        1     no
//    2 Speed         m/s       1     yes       14 Pitch         degBU+     1     no
//    3 Distance      m         1     yes       15 Roll          degPU+     1     no
//    4 Depth         m         1     yes       16 Acceleration             1     yes
//    5 Volume        m3        3     yes       17 Angular rate             1     yes
//    6 Density       T/m3      3     yes       18 Delivery      m3/s       3     yes
//    7 Velocity      m/s       1     yes       19 Angular       deg        1     no
//    8 Production    Ton/s     1     no        20 Area          m2         2     yes
//    9 Height        m         1     yes       21 Temperature   degC       1     no
//   10 Pressure      Bar       1     no        22 Paper         mm         1     yes
//   11 Power         KW        1     no        23 Force         kgf        1     no
//
// (deg, 2 and 3 stand here for the characters of Windows-1252.) The mnemonics are the numbered texts 12049 to 12065, in the
// language that is installed when an object makes its table, which is at its first use; a later change of language
// leaves them. What surprises, and is meant:
//
//   - A density has power 3 like a volume, though its length stands below the line, and Paper is tied to row 1.
//   - ToInternalUnit and ToExternalUnit use S and the row's offset, never the row's own unit factor.
//   - A System Units factor of 0.0 gives the tied rows the conversion factor 0 (a unit factor of 0.0: 1.0), so that
//     ConvertFromUnit divides by 0.
//
// A `kind` below 0 or above 23 never does harm: false with the outputs untouched, an empty text, or the value as given. No
// number is refused: infinities and NaN pass through the formulas as they are. Copies are independent and have all rows.
//
// Threads: the first use of an object writes to it, also when it is constant. After that any number of threads may read at
// once, as long as none calls SetUnit; make the first call before sharing an object. No locks are taken.
class ZELBASE_API CZelUnitCnv {
 public:
  // The kinds, by row. An aid for callers: every operation takes any int.
  enum Kind : int {
    NoUnit = 0,
    System = 1,
    Speed = 2,
    Distance = 3,
    Depth = 4,
    Volume = 5,
    Density = 6,
    Velocity = 7,
    Production = 8,
    Height = 9,
    Pressure = 10,
    Power = 11,
    Revolutions = 12,
    Weight = 13,
    Pitch = 14,
    Roll = 15,
    Acceleration = 16,
    AngularRate = 17,
    Delivery = 18,
    Angular = 19,
    Area = 20,
    Temperature = 21,
    Paper = 22,
    Force = 23
  };
  static constexpr int kNumKinds = 24;

  // The codes by which formats of values name a kind. Area has none. (The style codes of coordinates are other numbers.)
  enum FormatCode : int {
    FormatDistance = 2,
    FormatSpeed = 3,
    FormatDepth = 4,
    FormatSystem = 5,
    FormatVolume = 6,
    FormatDensity = 7,
    FormatVelocity = 8,
    FormatProduction = 9,
    FormatDelivery = 12,
    FormatHeight = 35,
    FormatPressure = 36,
    FormatPower = 37,
    FormatRevolutions = 38,
    FormatWeight = 39,
    FormatPitch = 40,
    FormatRoll = 41,
    FormatAcceleration = 42,
    FormatAngularRate = 43,
    FormatAngular = 47,
    FormatTemperature = 48,
    FormatPaper = 49,
    FormatForce = 50
  };

  // The default unit everywhere; the table is made at the first use.
  CZelUnitCnv() = default;

  // No moves: an object that was moved from would be marked as made, and have no rows.
  CZelUnitCnv(const CZelUnitCnv&) = default;
  CZelUnitCnv& operator=(const CZelUnitCnv&) = default;
  ~CZelUnitCnv() = default;

  // --- The choice ---

  // Stores the unit of the kind. `factor`: size of the unit in the base unit; `offset`: in the unit itself; `key`: its key in
  // the catalogue.
  bool SetUnit(int kind, double factor, double offset, const std::string& mnemonic, const std::string& key, const std::string& displayName);

  // What was stored; at first 1.0, 0.0, the default mnemonic and empty texts.
  bool GetUnit(int kind, double& factor, double& offset, std::string& mnemonic, std::string& key, std::string& displayName) const;
  std::string GetUnitMnem(int kind) const;
  std::string GetUnitKey(int kind) const;
  std::string GetUnitDispName(int kind) const;

  // --- Between the suite's unit and the chosen one ---

  // conversion factor * value + offset: from the unit inside the suite to the chosen one.
  double ConvertUnit(int kind, double value) const;

  // (value - offset) / conversion factor: the way back.
  double ConvertFromUnit(int kind, double value) const;

  // --- Between the row's unit and a unit that the caller states, of size `factor` and with `offset` ---
  //
  // With S as above, and P the row's power. The power 1.0 is computed without pow. `factor` is not guarded: 0.0 gives an
  // infinity or NaN.

  // With d = value - the row's offset:  d * factor / S + offset,  or  pow(factor / S, P) * d + offset.
  double ToInternalUnit(int kind, double value, double factor, double offset) const;

  // With d = value - offset:  S * d / factor + the row's offset,  or  pow(S / factor, P) * d + the row's offset.
  double ToExternalUnit(int kind, double value, double factor, double offset) const;

  // The same for a float: d is a difference of two floats, what is subtracted being rounded first; the rest is computed in
  // double and rounded to float at the end.
  float ToInternalUnit(int kind, float value, double factor, double offset) const;
  float ToExternalUnit(int kind, float value, double factor, double offset) const;

  // --- Codes ---

  // The kind of a format code; 0 for every code that is not among FormatCode.
  static int ConvertFMTtoUNIT(int formatCode);

 private:
  struct Unit {
    double factor = 1.0;
    std::string key;
    std::string mnemonic;
    std::string displayName;
    double conversionFactor = 1.0;
    double offset = 0.0;
    double power = 1.0;
    bool usesSystemUnit = true;
  };

  using Conversion = double (CZelUnitCnv::*)(int kind, double value) const;

  void Init() const;
  void MakeTable() const;
  void CompUnitCnv() const;
  const Unit* Find(int kind) const;
  const Unit* FindMade(int kind) const;
  double FirstUse(Conversion convert, int kind, double value) const;
  double GetSystemUnitForConversion(const Unit& unit) const;
  double ToInternal(const Unit& unit, double difference, double factor, double offset) const;
  double ToExternal(const Unit& unit, double difference, double factor) const;

  mutable bool m_initialised = false;
  mutable std::vector<Unit> m_units;
};
