// The three marks that an error carries for whoever shows it to the operator. Neighbour: Error.h stores them.
#pragma once

// This library stores, copies and returns these values and reads none of them: their meaning belongs to the modules that
// present errors. Only the initial values have a name here; any other value of the base type may be stored.

enum SEVERITY : int { SEVERITY_INITIAL = 1 };

enum ACCEPT_STATUS : int { ACCEPT_STATUS_INITIAL = 0 };

enum ACTIVE_STATUS : int { ACTIVE_STATUS_INITIAL = 0 };
