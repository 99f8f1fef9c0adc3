// The framework's application object. This library only passes it on, to CBaseInitializer::InitializeTemplates.
#pragma once

#include "zelbase/platform/CObject.h"

// A host derives its application from it; the library reads nothing of it.
class ZELBASE_API CWinApp : public CObject {
 public:
  CWinApp() = default;
};
