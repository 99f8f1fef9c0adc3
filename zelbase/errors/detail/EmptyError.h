// The error that stands where there is none. Internal to the library.
#pragma once

#include "zelbase/errors/Error.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// An empty GenericError with id 0 and time 0; always the same object, never destroyed.
ZELBASE_API const Error& EmptyError();

}  // namespace zelbase::detail
