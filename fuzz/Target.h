// What a fuzz target is: one function that takes the bytes of an input. Neighbours: Target.cpp, which calls it and holds each run to
// its limits; Require.h, by which a target demands.
#pragma once

#include <cstddef>
#include <cstdint>

// Defined by each target, once. Any bytes; what breaks a demand ends the process.
void RunInput(const std::uint8_t* data, std::size_t size);
