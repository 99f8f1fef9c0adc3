#include "zelbase/errors/detail/EmptyError.h"

#include "zelbase/errors/GenericError.h"

namespace zelbase::detail {

namespace {

GenericError* MakeEmptyError() {
  auto* const error = new GenericError;
  error->SetID(0);
  error->SetErrorTime(0);
  return error;
}

}  // namespace

const Error& EmptyError() {
  static const GenericError& empty = *MakeEmptyError();
  return empty;
}

}  // namespace zelbase::detail
