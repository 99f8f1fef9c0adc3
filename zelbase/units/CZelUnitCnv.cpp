#include "zelbase/units/CZelUnitCnv.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "zelbase/errors/NumberedTexts.h"

namespace {

// What a row is born with, and keeps but for the mnemonic.
struct Default {
  int mnemonic;  // number of the text; 0: none
  double power;
  bool usesSystemUnit;
};

constexpr std::array<Default, CZelUnitCnv::kNumKinds> kDefaults = {{
    {0, 1.0, true},       // No unit. Kept: tied, which counts between stated units only
    {12049, 1.0, true},   // System
    {12050, 1.0, true},   // Speed
    {12049, 1.0, true},   // Distance
    {12049, 1.0, true},   // Depth
    {12051, 3.0, true},   // Volume
    {12052, 3.0, true},   // Density. Kept: the power of a volume, by which catalogues in use choose their factors
    {12050, 1.0, true},   // Velocity
    {12061, 1.0, false},  // Production
    {12049, 1.0, true},   // Height
    {12055, 1.0, false},  // Pressure
    {12056, 1.0, false},  // Power
    {12057, 1.0, false},  // Revolutions
    {12060, 1.0, false},  // Weight
    {12058, 1.0, false},  // Pitch
    {12059, 1.0, false},  // Roll
    {0, 1.0, true},       // Acceleration
    {0, 1.0, true},       // Angular rate
    {12054, 3.0, true},   // Delivery
    {12053, 1.0, false},  // Angular
    {12062, 2.0, true},   // Area
    {12063, 1.0, false},  // Temperature
    {12064, 1.0, true},   // Paper. Kept: tied to System Units, as plots in use expect
    {12065, 1.0, false},  // Force
}};

}  // namespace

// --- The table -----------------------------------------------------------------------------------------------------------

void CZelUnitCnv::Init() const {
  if (!m_initialised) MakeTable();
}

// The row, or null for a kind that has none.
const CZelUnitCnv::Unit* CZelUnitCnv::Find(int kind) const {
  Init();
  return FindMade(kind);
}

// The same once the table has been made.
inline const CZelUnitCnv::Unit* CZelUnitCnv::FindMade(int kind) const {
  if (kind < 0 || kind >= kNumKinds) return nullptr;
  return &m_units[static_cast<std::size_t>(kind)];
}

void CZelUnitCnv::MakeTable() const {
  std::vector<Unit> units(kDefaults.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    if (kDefaults[i].mnemonic != 0) units[i].mnemonic = NumberedText(kDefaults[i].mnemonic);
    units[i].power = kDefaults[i].power;
    units[i].usesSystemUnit = kDefaults[i].usesSystemUnit;
  }
  m_units = std::move(units);
  m_initialised = true;
  CompUnitCnv();
}

void CZelUnitCnv::CompUnitCnv() const {
  // Kept: row 0 stays at 1.0, whatever its unit factor; only its offset counts.
  for (std::size_t i = 1; i < m_units.size(); ++i) {
    Unit& unit = m_units[i];
    if (unit.factor == 0.0) {
      unit.conversionFactor = 1.0;
      continue;
    }
    // Kept: only the row's own factor is guarded; a System Units factor of 0 makes this 0, which formats show as such.
    const double ratio = GetSystemUnitForConversion(unit) / unit.factor;
    unit.conversionFactor = unit.power == 1.0 ? ratio : std::pow(ratio, unit.power);
  }
}

double CZelUnitCnv::GetSystemUnitForConversion(const Unit& unit) const { return unit.usesSystemUnit ? m_units[System].factor : 1.0; }

// --- The choice ----------------------------------------------------------------------------------------------------------

bool CZelUnitCnv::SetUnit(int kind, double factor, double offset, const std::string& mnemonic, const std::string& key,
                          const std::string& displayName) {
  if (Find(kind) == nullptr) return false;
  Unit& unit = m_units[static_cast<std::size_t>(kind)];
  unit.factor = factor;
  unit.offset = offset;
  unit.mnemonic = mnemonic;
  unit.key = key;
  unit.displayName = displayName;
  CompUnitCnv();  // Kept: all rows, whichever was set; a change of System Units rescales the others
  return true;
}

bool CZelUnitCnv::GetUnit(int kind, double& factor, double& offset, std::string& mnemonic, std::string& key,
                          std::string& displayName) const {
  const Unit* const unit = Find(kind);
  if (unit == nullptr) return false;
  factor = unit->factor;
  offset = unit->offset;
  mnemonic = unit->mnemonic;
  key = unit->key;
  displayName = unit->displayName;
  return true;
}

std::string CZelUnitCnv::GetUnitMnem(int kind) const {
  const Unit* const unit = Find(kind);
  return unit == nullptr ? std::string() : unit->mnemonic;
}

std::string CZelUnitCnv::GetUnitKey(int kind) const {
  const Unit* const unit = Find(kind);
  return unit == nullptr ? std::string() : unit->key;
}

std::string CZelUnitCnv::GetUnitDispName(int kind) const {
  const Unit* const unit = Find(kind);
  return unit == nullptr ? std::string() : unit->displayName;
}

// --- Conversions: each expression is evaluated in the order in which it stands -----------------------------------------------

// Displays convert every value they show. So the way of a table that has been made is a test, a comparison and the arithmetic;
// the first use is left to a function of its own, which makes the table and asks again.

double CZelUnitCnv::ConvertUnit(int kind, double value) const {
  if (!m_initialised) [[unlikely]]
    return FirstUse(&CZelUnitCnv::ConvertUnit, kind, value);
  const Unit* const unit = FindMade(kind);
  return unit == nullptr ? value : unit->conversionFactor * value + unit->offset;
}

double CZelUnitCnv::ConvertFromUnit(int kind, double value) const {
  if (!m_initialised) [[unlikely]]
    return FirstUse(&CZelUnitCnv::ConvertFromUnit, kind, value);
  const Unit* const unit = FindMade(kind);
  return unit == nullptr ? value : (value - unit->offset) / unit->conversionFactor;
}

double CZelUnitCnv::FirstUse(Conversion convert, int kind, double value) const {
  Init();
  return (this->*convert)(kind, value);
}

// Kept: the size of the row's unit is taken to be that of System Units here, its own unit factor has no part.
double CZelUnitCnv::ToInternal(const Unit& unit, double difference, double factor, double offset) const {
  const double system = GetSystemUnitForConversion(unit);
  if (unit.power == 1.0) return difference * factor / system + offset;
  return std::pow(factor / system, unit.power) * difference + offset;
}

double CZelUnitCnv::ToExternal(const Unit& unit, double difference, double factor) const {
  const double system = GetSystemUnitForConversion(unit);
  if (unit.power == 1.0) return system * difference / factor + unit.offset;
  return std::pow(system / factor, unit.power) * difference + unit.offset;
}

double CZelUnitCnv::ToInternalUnit(int kind, double value, double factor, double offset) const {
  const Unit* const unit = Find(kind);
  return unit == nullptr ? value : ToInternal(*unit, value - unit->offset, factor, offset);
}

double CZelUnitCnv::ToExternalUnit(int kind, double value, double factor, double offset) const {
  const Unit* const unit = Find(kind);
  return unit == nullptr ? value : ToExternal(*unit, value - offset, factor);
}

float CZelUnitCnv::ToInternalUnit(int kind, float value, double factor, double offset) const {
  const Unit* const unit = Find(kind);
  if (unit == nullptr) return value;
  const float difference = value - static_cast<float>(unit->offset);
  return static_cast<float>(ToInternal(*unit, static_cast<double>(difference), factor, offset));
}

float CZelUnitCnv::ToExternalUnit(int kind, float value, double factor, double offset) const {
  const Unit* const unit = Find(kind);
  if (unit == nullptr) return value;
  const float difference = value - static_cast<float>(offset);
  return static_cast<float>(ToExternal(*unit, static_cast<double>(difference), factor));
}

// --- Codes ---------------------------------------------------------------------------------------------------------------

int CZelUnitCnv::ConvertFMTtoUNIT(int formatCode) {
  switch (formatCode) {
    case FormatDistance: return Distance;
    case FormatSpeed: return Speed;
    case FormatDepth: return Depth;
    case FormatSystem: return System;
    case FormatVolume: return Volume;
    case FormatDensity: return Density;
    case FormatVelocity: return Velocity;
    case FormatProduction: return Production;
    case FormatDelivery: return Delivery;
    case FormatHeight: return Height;
    case FormatPressure: return Pressure;
    case FormatPower: return Power;
    case FormatRevolutions: return Revolutions;
    case FormatWeight: return Weight;
    case FormatPitch: return Pitch;
    case FormatRoll: return Roll;
    case FormatAcceleration: return Acceleration;
    case FormatAngularRate: return AngularRate;
    case FormatAngular: return Angular;
    case FormatTemperature: return Temperature;
    case FormatPaper: return Paper;
    case FormatForce: return Force;
    default: return NoUnit;
  }
}
