// An error that carries its own texts. Neighbours: FileError.h and FileObjectError.h, which look theirs up.
#pragma once

#include <string>

#include "zelbase/errors/Error.h"

// For failures that no other class describes. All texts may be empty and of any length. Copies as Error.h says.
class ZELBASE_API GenericError : public Error {
 public:
  GenericError() = default;
  GenericError(const std::string& description);
  GenericError(const std::string& description, const std::string& details, const std::string& type);
  GenericError(const GenericError& other) = default;
  GenericError& operator=(const GenericError& other);

  void SetDescription(const std::string& description) { m_description = description; }
  void SetDetails(const std::string& details) { m_details = details; }
  void SetType(const std::string& type) { m_type = type; }

  // The type; "General Error" when it is empty.
  const std::string Type() const override;

  // The description.
  const std::string Format() const override { return m_description; }

  // The details.
  const std::string Details() const override { return m_details; }

  Error* Copy() const override { return new GenericError(*this); }

  // Over description, details and type, with nothing between them: "ab", "" and "a", "b" have the same one.
  unsigned int Signature() const override;

 private:
  std::string m_description;
  std::string m_details;
  std::string m_type;
};
