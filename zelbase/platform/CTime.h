// The suite's whole-second time. Neighbour: zelbase/time/CExTime.h, the time value with fractions, which converts.
#pragma once

// Seconds since 1970-01-01 00:00:00 UTC, negative before.
using CTime = long long;
