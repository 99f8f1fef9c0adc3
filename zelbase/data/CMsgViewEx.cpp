#include "zelbase/data/CMsgViewEx.h"

CMsgViewEx::CMsgViewEx() = default;

CMsgViewEx::CMsgViewEx(const CMsgViewEx& other) = default;

CMsgViewEx& CMsgViewEx::operator=(const CMsgViewEx& other) = default;

CMsgViewEx::~CMsgViewEx() = default;
