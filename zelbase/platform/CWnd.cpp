#include "zelbase/platform/CWnd.h"

#include <typeinfo>

#include "zelbase/platform/detail/ClassName.h"

std::string CWnd::RuntimeClassName() const { return "class " + zelbase::detail::ClassName(typeid(*this)); }
