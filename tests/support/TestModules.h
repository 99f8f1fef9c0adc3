// The shared libraries of tests/modules/, and what of their bytes is loaded. Neighbour: SourceFolder.h.
#pragma once

#include <cstddef>
#include <string>

// The file of a module of tests/modules, in this system's form, and its content.
std::string ModuleFile(const std::string& module);
std::string ModuleContent(const std::string& module);

// Where the last byte ends that is loaded of such a content, by its table of segments; tables for debuggers come behind.
std::size_t EndOfSegments(const std::string& content);
