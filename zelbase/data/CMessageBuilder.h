// Turns data of the suite into the texts of outgoing messages, for a device or a log: the base of the builders in the drivers.
// Neighbours: CMessageBuilderList.h makes them by name; CDataInfo.h names the data.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "zelbase/data/CDataId.h"
#include "zelbase/data/CDataInfo.h"
#include "zelbase/platform/ZelBaseApi.h"

// Classes of the suite outside this library, only passed on here.
class CAttributeMap;
class CDataBlock;
class Device;

// A driver derives from it and overrides one of the two protected BuildMessage: the one of a single text, or the one of several.
//
//   class CourseBuilder : public CMessageBuilder {
//    protected:
//     using CMessageBuilder::BuildMessage;
//     bool BuildMessage(std::string& message) override { ... }
//   };
//
// What surprises:
//   (1) Overriding one BuildMessage hides the other three in the derived class; the using line above brings them back.
//   (2) Copies share the array of items. The last of them frees it.
//   (3) Init may be called again; it leaves the items as they were when it is given none.
//
// The device is not owned, and must live as long as it is used. One thread at a time, as far as derived classes allow no more.
class ZELBASE_API CMessageBuilder {
 public:
  CMessageBuilder();
  CMessageBuilder(const CMessageBuilder& other);
  CMessageBuilder& operator=(const CMessageBuilder& other);
  virtual ~CMessageBuilder();

  virtual void SetDevicePtr(Device* device);

  // Copies `count` items, which stay the caller's, in place of earlier ones, and takes the identifier. A null array or a count below 1
  // leaves the items as they were and still takes the identifier. False, with nothing changed, without memory for the items.
  virtual bool Init(CDataInfo* items, int count, CDataId& id);

  // The message as texts. The builder of a single text comes first, with a fresh text each time: where it succeeds `messages` holds
  // that text alone, even an empty one. Otherwise the builder of several texts fills `messages` and gives the result.
  virtual bool GetMessage(std::vector<std::string>& messages);

  // Nothing here.
  virtual void SetMsgMode(int mode);
  virtual void SetAttribMap(CAttributeMap* attributes);

 protected:
  // The message of the builder's items. False here.
  virtual bool BuildMessage(std::vector<std::string>& messages);
  virtual bool BuildMessage(std::string& message);

 public:
  // The message of a block of data; the two numbers are the driver's. False here.
  virtual bool BuildMessage(const CDataBlock& block, int first, int second, std::vector<std::string>& messages);
  virtual bool BuildMessage(const CDataBlock& block, int first, int second, std::string& message);

  void SetBuildForLogging(bool on) { m_buildForLogging = on; }
  bool IsBuildForLogging() const { return m_buildForLogging; }

 protected:
  Device* m_device = nullptr;
  CDataInfo* m_dataItems = nullptr;  // null, or m_itemCount items, which copies share
  int m_itemCount = 0;
  CDataId m_dataId;

 private:
  bool m_buildForLogging = false;
  std::shared_ptr<CDataInfo[]> m_itemsOwner;
};
