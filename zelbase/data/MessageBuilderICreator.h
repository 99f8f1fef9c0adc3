// What a driver hands in so that builders of its kind can be made without knowing their class. Neighbours: CMessageBuilderList.h
// holds the creators, CMessageBuilder.h is what they make.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

class CMessageBuilder;

// Implemented by the drivers; one object for each name, handed to CMessageBuilderList::RegisterMessageBuilder.
class ZELBASE_API MessageBuilderICreator {
 public:
  // A new builder, which the caller owns, or null.
  virtual CMessageBuilder* Create() = 0;

  virtual ~MessageBuilderICreator() = default;
};
