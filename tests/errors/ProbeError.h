// An error for tests: of any signature, as small as can be, and counted while it lives.
#pragma once

#include <atomic>
#include <string>

#include "zelbase/errors/Error.h"

class ProbeError : public Error {
 public:
  explicit ProbeError(unsigned int signature) : m_signature(signature) { ++s_alive; }
  ProbeError(unsigned int signature, long long time) : ProbeError(signature) { SetErrorTime(time); }
  ProbeError(const ProbeError& other) : Error(other), m_signature(other.m_signature) { ++s_alive; }
  ProbeError& operator=(const ProbeError&) = default;
  ~ProbeError() override { --s_alive; }

  const std::string Type() const override { return "Probe"; }
  const std::string Format() const override { return "probe " + std::to_string(m_signature); }
  const std::string Details() const override { return "details"; }
  Error* Copy() const override { return new ProbeError(*this); }
  unsigned int Signature() const override { return m_signature; }

  void SetSignature(unsigned int signature) { m_signature = signature; }

  // How many live now.
  static int Alive() { return s_alive; }

 private:
  static inline std::atomic<int> s_alive{0};

  unsigned int m_signature;
};
