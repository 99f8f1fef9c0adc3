#include "zelbase/comms/CPortSettings.h"

CPortSettings::CPortSettings() = default;

CPortSettings::CPortSettings(const CPortSettings& other) = default;

CPortSettings& CPortSettings::operator=(const CPortSettings& other) {
  // The section would lose its items by being assigned to itself.
  if (this == &other) return *this;
  section = other.section;
  block = other.block;
  object0 = other.object0;
  object1 = other.object1;
  object2 = other.object2;
  return *this;
}

CPortSettings::~CPortSettings() = default;
