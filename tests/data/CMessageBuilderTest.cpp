#include "zelbase/data/CMessageBuilder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

namespace {

// An object of a class of the suite outside the library, which is known by its address alone.
template <class Outside>
Outside& Somewhere() {
  static char place;
  return reinterpret_cast<Outside&>(place);
}

// The next array of bytes is refused when it is set; see operator new[] below.
thread_local bool g_refuseArrays = false;

}  // namespace

// Stands in for the language's own in this program, so that memory can run out where a test wants it.
void* operator new[](std::size_t size) {
  if (g_refuseArrays) throw std::bad_alloc();
  return ::operator new(size);
}
void operator delete[](void* array) noexcept { ::operator delete(array); }
void operator delete[](void* array, std::size_t) noexcept { ::operator delete(array); }

namespace {

using Texts = std::vector<std::string>;

// Shows what the base keeps for those who derive from it.
class Probe : public CMessageBuilder {
 public:
  using CMessageBuilder::BuildMessage;
  using CMessageBuilder::m_dataId;
  using CMessageBuilder::m_dataItems;
  using CMessageBuilder::m_device;
  using CMessageBuilder::m_itemCount;

  std::vector<CDataInfo> Items() const { return std::vector<CDataInfo>(m_dataItems, m_dataItems + m_itemCount); }
};

const CDataInfo kDepth(CDataId(5, 1002, 3, 1), 7, 9);
const CDataInfo kSpeed(CDataId(6, 12, 1, 1), 2, 4);

TEST(CMessageBuilder, BeginsWithNothing) {
  const Probe probe;
  EXPECT_EQ(probe.m_device, nullptr);
  EXPECT_EQ(probe.m_dataItems, nullptr);
  EXPECT_EQ(probe.m_itemCount, 0);
  EXPECT_EQ(probe.m_dataId, CDataId());
  EXPECT_FALSE(probe.IsBuildForLogging());
}

TEST(CMessageBuilder, InitCopiesTheItemsAndTakesTheIdentifier) {
  Probe probe;
  CDataInfo items[] = {kDepth, kSpeed};
  CDataId id(1, 2, 3, 4);
  EXPECT_TRUE(probe.Init(items, 2, id));
  items[0] = CDataInfo();
  id.SetDataType(9);
  EXPECT_EQ(probe.Items(), (std::vector<CDataInfo>{kDepth, kSpeed}));
  EXPECT_EQ(probe.m_dataId, CDataId(1, 2, 3, 4));
}

TEST(CMessageBuilder, InitWithoutItemsStillTakesTheIdentifier) {
  Probe probe;
  CDataInfo item = kDepth;
  CDataId first(1, 2, 3, 4);
  EXPECT_TRUE(probe.Init(nullptr, 5, first));
  EXPECT_EQ(probe.m_dataItems, nullptr);
  EXPECT_EQ(probe.m_itemCount, 0);
  EXPECT_EQ(probe.m_dataId, first);
  EXPECT_TRUE(probe.Init(&item, 1, first));
  for (const int count : {0, -1, std::numeric_limits<int>::min()}) {
    CDataId second(5, 6, 7, static_cast<unsigned short>(count + 10));
    EXPECT_TRUE(probe.Init(&item, count, second));
    EXPECT_EQ(probe.m_dataId, second);
    EXPECT_EQ(probe.Items(), std::vector<CDataInfo>{kDepth});
  }
}

TEST(CMessageBuilder, ASecondInitReplacesTheItems) {
  Probe probe;
  CDataInfo items[] = {kDepth, kSpeed};
  CDataId id;
  EXPECT_TRUE(probe.Init(items, 2, id));
  EXPECT_TRUE(probe.Init(items + 1, 1, id));
  EXPECT_EQ(probe.Items(), std::vector<CDataInfo>{kSpeed});
  EXPECT_TRUE(probe.Init(probe.m_dataItems, 1, probe.m_dataId));  // its own
  EXPECT_EQ(probe.Items(), std::vector<CDataInfo>{kSpeed});
}

TEST(CMessageBuilder, InitWithoutMemoryIsFalseAndLeavesEverything) {
  Probe probe;
  CDataInfo items[] = {kDepth, kSpeed};
  CDataId first(1, 2, 3, 4);
  CDataId second(5, 6, 7, 8);
  EXPECT_TRUE(probe.Init(items, 1, first));
  g_refuseArrays = true;
  const bool initialised = probe.Init(items, 2, second);
  g_refuseArrays = false;
  EXPECT_FALSE(initialised);
  EXPECT_EQ(probe.Items(), std::vector<CDataInfo>{kDepth});
  EXPECT_EQ(probe.m_dataId, first);
}

TEST(CMessageBuilder, CopiesShareTheItemsAndTheLastFreesThem) {
  CDataInfo items[] = {kDepth, kSpeed};
  CDataId id(1, 2, 3, 4);
  Device* const device = &Somewhere<Device>();
  auto probe = std::make_unique<Probe>();
  EXPECT_TRUE(probe->Init(items, 2, id));
  probe->SetDevicePtr(device);
  probe->SetBuildForLogging(true);
  auto copy = std::make_unique<Probe>(*probe);
  Probe assigned;
  assigned = *copy;
  EXPECT_EQ(copy->m_dataItems, probe->m_dataItems);
  EXPECT_EQ(assigned.m_dataItems, probe->m_dataItems);
  probe.reset();
  copy.reset();
  EXPECT_EQ(assigned.Items(), (std::vector<CDataInfo>{kDepth, kSpeed}));
  EXPECT_EQ(assigned.m_device, device);
  EXPECT_EQ(assigned.m_dataId, id);
  EXPECT_TRUE(assigned.IsBuildForLogging());
}

TEST(CMessageBuilder, ACopysInitLeavesTheOthersItems) {
  CDataInfo items[] = {kDepth, kSpeed};
  CDataId id;
  Probe probe;
  EXPECT_TRUE(probe.Init(items, 2, id));
  Probe copy(probe);
  EXPECT_TRUE(copy.Init(items + 1, 1, id));
  EXPECT_EQ(probe.Items(), (std::vector<CDataInfo>{kDepth, kSpeed}));
}

TEST(CMessageBuilder, TheBaseBuildsNoMessageAndLeavesWhatItIsGiven) {
  Probe probe;
  Texts messages = {"before"};
  std::string message = "before";
  const CDataBlock& block = Somewhere<CDataBlock>();
  probe.SetMsgMode(3);
  probe.SetAttribMap(&Somewhere<CAttributeMap>());
  EXPECT_FALSE(probe.GetMessage(messages));
  EXPECT_FALSE(probe.BuildMessage(messages));
  EXPECT_FALSE(probe.BuildMessage(message));
  EXPECT_FALSE(probe.BuildMessage(block, 1, 2, messages));
  EXPECT_FALSE(probe.BuildMessage(block, 1, 2, message));
  EXPECT_EQ(messages, Texts{"before"});
  EXPECT_EQ(message, "before");
}

TEST(CMessageBuilder, BuildForLoggingIsKept) {
  CMessageBuilder builder;
  builder.SetBuildForLogging(true);
  EXPECT_TRUE(builder.IsBuildForLogging());
  builder.SetBuildForLogging(false);
  EXPECT_FALSE(builder.IsBuildForLogging());
}

// Builds as told, and writes down the calls.
class Scripted : public CMessageBuilder {
 public:
  bool oneResult = false;
  bool manyResult = false;
  std::string one;
  Texts many;
  std::string calls;

 protected:
  using CMessageBuilder::BuildMessage;
  bool BuildMessage(std::string& message) override {
    calls += "one(" + message + ")";
    message = one;
    return oneResult;
  }
  bool BuildMessage(Texts& messages) override {
    calls += "many";
    messages.insert(messages.end(), many.begin(), many.end());
    return manyResult;
  }
};

TEST(CMessageBuilder, ASingleTextComesFirstAndTakesThePlaceOfAllOthers) {
  Scripted builder;
  builder.oneResult = true;
  builder.one = "$COURSE";
  Texts messages = {"before", "more"};
  EXPECT_TRUE(builder.GetMessage(messages));
  EXPECT_EQ(messages, Texts{"$COURSE"});
  EXPECT_EQ(builder.calls, "one()");
}

TEST(CMessageBuilder, AnEmptySingleTextIsAMessageToo) {
  Scripted builder;
  builder.oneResult = true;
  Texts messages = {"before", "more"};
  EXPECT_TRUE(builder.GetMessage(messages));
  EXPECT_EQ(messages, Texts{""});
}

TEST(CMessageBuilder, TheSingleTextIsFreshEachTime) {
  Scripted builder;
  builder.oneResult = true;
  builder.one = "$COURSE";
  Texts messages;
  EXPECT_TRUE(builder.GetMessage(messages));
  EXPECT_TRUE(builder.GetMessage(messages));
  EXPECT_EQ(builder.calls, "one()one()");
  EXPECT_EQ(messages, Texts{"$COURSE"});
}

TEST(CMessageBuilder, WithoutASingleTextTheSeveralPassThroughWithTheirResult) {
  for (const bool result : {false, true}) {
    Scripted builder;
    builder.one = "not used";
    builder.many = {"a", "b"};
    builder.manyResult = result;
    Texts messages = {"before"};
    EXPECT_EQ(builder.GetMessage(messages), result);
    EXPECT_EQ(messages, (Texts{"before", "a", "b"}));
    EXPECT_EQ(builder.calls, "one()many");
  }
}

// Overrides one of the four, as a driver does.
class OneOnly : public CMessageBuilder {
 public:
  bool BuildMessage(const CDataBlock&, int first, int second, std::string& message) override {
    message = std::to_string(first) + " " + std::to_string(second);
    return true;
  }
};

template <class Builder>
concept BuildsSeveralFromABlock = requires(Builder& builder, const CDataBlock& block, Texts& messages) {
  builder.BuildMessage(block, 1, 2, messages);
};

TEST(CMessageBuilder, OverridingOneBuildMessageHidesTheOthers) {
  static_assert(BuildsSeveralFromABlock<CMessageBuilder>);
  static_assert(!BuildsSeveralFromABlock<OneOnly>);
  OneOnly builder;
  const CDataBlock& block = Somewhere<CDataBlock>();
  std::string message;
  Texts messages;
  EXPECT_TRUE(builder.BuildMessage(block, 3, -4, message));
  EXPECT_EQ(message, "3 -4");
  CMessageBuilder& base = builder;
  EXPECT_TRUE(base.BuildMessage(block, 5, 6, message));
  EXPECT_EQ(message, "5 6");
  EXPECT_FALSE(base.BuildMessage(block, 5, 6, messages));
}

TEST(CMessageBuilder, IsDestroyedThroughItself) {
  static_assert(std::has_virtual_destructor_v<CMessageBuilder>);
  const std::unique_ptr<CMessageBuilder> builder = std::make_unique<Scripted>();
  EXPECT_NE(dynamic_cast<Scripted*>(builder.get()), nullptr);
}

}  // namespace
