#include "zelbase/actions/ZelTool.h"

ZelTool::~ZelTool() = default;

void ZelTool::Enable(bool enable) { m_enabled = enable; }
