// Opens a settings file that may well be missing. Internal to the library; FileObject::FileOpen is the form that reports.
#pragma once

#include <string>

#include "zelbase/config/FileObject.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// Reads `fileName`, others denied writing meanwhile, into `settings`, whose former content goes. False, and `settings` empty
// and closed, when it does not open or a read fails midway. Nothing is reported and nothing thrown, so that it may be
// called in the constructor of what error texts are made with.
ZELBASE_API bool OpenQuietly(FileObject& settings, const std::string& fileName);

}  // namespace zelbase::detail
