#include "zelbase/errors/GenericError.h"

#include "zelbase/config/CRCChecksum.h"

GenericError::GenericError(const std::string& description) : m_description(description) {}

GenericError::GenericError(const std::string& description, const std::string& details, const std::string& type)
    : m_description(description), m_details(details), m_type(type) {}

GenericError& GenericError::operator=(const GenericError& other) {
  m_description = other.m_description;
  m_details = other.m_details;
  m_type = other.m_type;
  Error::operator=(other);  // last: `other` may be among the causes that go
  return *this;
}

const std::string GenericError::Type() const { return m_type.empty() ? "General Error" : m_type; }

unsigned int GenericError::Signature() const {
  CRCChecksum sum;
  // Kept: nothing between the texts, so that signatures noted by other modules keep their values.
  sum += m_description;
  sum += m_details;
  sum += m_type;
  return sum.Value();
}
