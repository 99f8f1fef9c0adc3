#include "zelbase/data/BaseDataSource.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <type_traits>

// Classes of other modules, of which the interface knows the names only.
class CDataBlock {
 public:
  int number = 0;
};
class CAttributeMap {};

namespace {

// Something to refer to where an identifier is asked for; nothing looks at it.
alignas(16) unsigned char g_identifierBytes[256];
CDataId& SomeIdentifier() { return reinterpret_cast<CDataId&>(g_identifierBytes); }

TEST(BaseDataSource, HasNoOptionAtFirst) {
  const BaseDataSource source;
  EXPECT_FALSE(source.CheckOption(-1));
  EXPECT_FALSE(source.CheckOption(0));
}

TEST(BaseDataSource, OptionsAreSetAndResetBitByBit) {
  BaseDataSource source;
  source.SetOption(5);
  EXPECT_TRUE(source.CheckOption(1));
  EXPECT_FALSE(source.CheckOption(2));
  EXPECT_TRUE(source.CheckOption(4));
  source.SetOption(2);
  source.ResetOption(4);
  EXPECT_TRUE(source.CheckOption(1));
  EXPECT_TRUE(source.CheckOption(2));
  EXPECT_FALSE(source.CheckOption(4));
  source.ResetOption(8);
  EXPECT_TRUE(source.CheckOption(3));
}

TEST(BaseDataSource, SeveralBitsAreCheckedForAnyOfThem) {
  BaseDataSource source;
  source.SetOption(4);
  EXPECT_TRUE(source.CheckOption(6));
  EXPECT_TRUE(source.CheckOption(-1));
  EXPECT_FALSE(source.CheckOption(3));
  EXPECT_FALSE(source.CheckOption(0));
}

TEST(BaseDataSource, TheHighestBitIsAnOptionToo) {
  BaseDataSource source;
  source.SetOption(INT_MIN);
  EXPECT_TRUE(source.CheckOption(INT_MIN));
  EXPECT_FALSE(source.CheckOption(INT_MAX));
  source.ResetOption(-1);
  EXPECT_FALSE(source.CheckOption(-1));
}

TEST(BaseDataSource, CopiesHaveTheOptionsForThemselves) {
  BaseDataSource source;
  source.SetOption(3);
  BaseDataSource copy(source);
  BaseDataSource assigned;
  assigned.SetOption(8);
  assigned = source;
  source.ResetOption(1);
  EXPECT_TRUE(copy.CheckOption(1));
  EXPECT_TRUE(assigned.CheckOption(1));
  EXPECT_FALSE(assigned.CheckOption(8));
}

TEST(BaseDataSource, AnswersNothingUnlessOverriddenAndLeavesArgumentsAlone) {
  BaseDataSource source;
  CDataBlock block;
  block.number = 7;
  CAttributeMap attributes;
  CDataId& id = SomeIdentifier();
  double a = 1.5, b = 2.5, c = 3.5, d = 4.5;
  unsigned short status = 9;

  source.Init();
  EXPECT_FALSE(source.DataBlockSetup(1, id));
  EXPECT_FALSE(source.InitDataElement(1, 2, 3, 4, 5, 6));
  EXPECT_FALSE(source.DataBlockInit());
  EXPECT_FALSE(source.Allocate(100L));
  EXPECT_FALSE(source.Interpolate(block));
  EXPECT_FALSE(source.Interpolate(1000.0, 1, 2, a, status));
  EXPECT_FALSE(source.InterpolateHeading(1000.0, 1, 2, 0.0, 360.0, a, status));
  EXPECT_FALSE(source.FindIntervalStartEnd(1000.0, 1, 2, a, b, c, d, status));
  EXPECT_FALSE(source.AddDataBlock(block));
  EXPECT_FALSE(source.AddClockSyncDataBlock(block));
  EXPECT_FALSE(source.UpdateDataBlock(block));
  EXPECT_FALSE(source.UpdateData(1000.0, attributes));
  EXPECT_FALSE(source.HandleAttribsChange(id));
  EXPECT_FALSE(source.GetDataBlock(0, block));
  EXPECT_FALSE(source.GetDataBlock(0, a, block));
  EXPECT_FALSE(source.GetDataTimeStatus(0, a, status));
  EXPECT_FALSE(source.GetLastElementInternal());
  EXPECT_EQ(source.GetInternalDataBlock(), nullptr);
  source.CopyDataBlock(block);
  EXPECT_EQ(source.GetBufSize(), 0L);
  EXPECT_EQ(source.GetNumElements(), 0L);
  EXPECT_FALSE(source.GetBufferStatus(a, status));
  EXPECT_FALSE(source.SetBufferStatus(1000.0, 1));
  EXPECT_FALSE(source.GetDataId(id));
  EXPECT_EQ(source.GetDataIdPtr(), nullptr);
  EXPECT_FALSE(source.GetTimeSpan(a, b));
  EXPECT_EQ(source.GetFirstElementTime(), 0.0);
  EXPECT_EQ(source.GetLastElementTime(), 0.0);
  EXPECT_FALSE(source.GetLastAddTime(a));
  EXPECT_FALSE(source.GetLastAddTimeLocal(a));
  source.SetInterpolAttribs(true, 1.0);
  source.SetExtrapolationAttribs(true, 1.0);
  EXPECT_FALSE(source.GetInterpolAttribs(a));
  EXPECT_FALSE(source.GetExtrapolationAttribs(a));
  source.NotifySubscribers();
  source.ReportError(1000.0, true, 3);
  EXPECT_EQ(source.GetError(), 0);

  EXPECT_EQ(block.number, 7);
  EXPECT_EQ(a, 1.5);
  EXPECT_EQ(b, 2.5);
  EXPECT_EQ(c, 3.5);
  EXPECT_EQ(d, 4.5);
  EXPECT_EQ(status, 9);
  EXPECT_FALSE(source.CheckOption(-1));
}

// A source that has some of the operations, in the forms in which they are printed.
class TideSource : public BaseDataSource {
 public:
  explicit TideSource(bool& gone) : m_gone(gone) {}
  ~TideSource() override { m_gone = true; }

  void SetOption(int mask) override { BaseDataSource::SetOption(mask | 16); }
  bool Allocate(long count) override { return count > 0; }
  bool Interpolate(CDataBlock& block) override {
    block.number = 1;
    return true;
  }
  bool Interpolate(double time, unsigned short, unsigned short, double& value, unsigned short& status) override {
    value = time / 2;
    status = 1;
    return true;
  }
  bool GetDataBlock(int index, CDataBlock& block) override {
    block.number = index;
    return true;
  }
  bool GetDataBlock(int index, double& time, CDataBlock& block) override {
    time = 5.0;
    return GetDataBlock(index, block);
  }
  void CopyDataBlock(CDataBlock& block) const override { block.number = 42; }
  long GetBufSize() const override { return 3000000000L; }
  CDataBlock* GetInternalDataBlock() override { return &m_block; }

 private:
  bool& m_gone;
  CDataBlock m_block;
};

TEST(BaseDataSource, IsUsedAndDestroyedThroughTheBase) {
  bool gone = false;
  {
    const std::unique_ptr<BaseDataSource> source = std::make_unique<TideSource>(gone);
    source->SetOption(1);
    EXPECT_TRUE(source->CheckOption(16));
    EXPECT_TRUE(source->Allocate(1));
    CDataBlock block;
    double number = 0.0;
    unsigned short status = 0;
    EXPECT_TRUE(source->Interpolate(block));
    EXPECT_EQ(block.number, 1);
    EXPECT_TRUE(source->Interpolate(8.0, 0, 0, number, status));
    EXPECT_EQ(number, 4.0);
    EXPECT_TRUE(source->GetDataBlock(6, number, block));
    EXPECT_EQ(block.number, 6);
    source->CopyDataBlock(block);
    EXPECT_EQ(block.number, 42);
    EXPECT_EQ(source->GetBufSize(), 3000000000L);
    EXPECT_NE(source->GetInternalDataBlock(), nullptr);
    EXPECT_FALSE(gone);
  }
  EXPECT_TRUE(gone);
  EXPECT_FALSE(std::is_abstract_v<BaseDataSource>);
}

}  // namespace
