// A block of bytes that travels from one program's part to another: what a shared file leaves and the clipboard carries.
// Neighbours: CSharedFile.h, COleDataSource.h, COleDataObject.h.
#pragma once

#include <memory>
#include <string>

// Shared and never changed, so that any number of holders may read it from any thread; null is no block.
using HGLOBAL = std::shared_ptr<const std::string>;
