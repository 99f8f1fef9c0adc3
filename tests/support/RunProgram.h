// Runs a program as a person would, and keeps what it said.
#pragma once

#include <string>
#include <vector>

struct ProgramResult {
  int exitCode = -1;  // -1 when it did not exit by itself
  std::string output;
  std::string errors;
};

// Runs `program` with `arguments` (taken literally), without standard input, and waits for its end.
ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& arguments);
