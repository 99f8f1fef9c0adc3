// Where the checkout and its build lie, for tests that read samples or sources.
#pragma once

#include <string>

// The root of the checkout, without a final "/".
std::string SourceFolder();

// The root of the build under test, likewise.
std::string BinaryFolder();
