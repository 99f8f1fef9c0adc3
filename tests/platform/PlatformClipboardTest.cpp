#include "zelbase/platform/PlatformClipboard.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "zelbase/platform/COleDataObject.h"
#include "zelbase/platform/COleDataSource.h"

namespace {

TEST(PlatformClipboard, TheSystemsOwnIsOneForTheProcess) {
  EXPECT_EQ(&PlatformClipboard::System(), &PlatformClipboard::System());
  EXPECT_EQ(&PlatformService<PlatformClipboard>::Current(), &PlatformClipboard::System());
}

// A desktop's adapter that fetches a block when it is asked for.
class Desktop : public PlatformClipboard, public ClipboardContent {
 public:
  unsigned int RegisterFormat(const std::string&) override { return 0xC123; }
  bool Put(std::shared_ptr<const ClipboardContent> content) override {
    put = content;
    return false;
  }
  std::shared_ptr<const ClipboardContent> Get() override { return std::shared_ptr<const ClipboardContent>(std::shared_ptr<void>(), this); }

  std::vector<FORMATETC> Formats() const override { return Offers(); }
  HGLOBAL Block(unsigned short format) const override { return std::make_shared<const std::string>("block " + std::to_string(format)); }

  std::shared_ptr<const ClipboardContent> put;

 private:
  static std::vector<FORMATETC> Offers() {
    FORMATETC offer;
    offer.cfFormat = 0xC123;
    return {offer};
  }
};

TEST(PlatformClipboard, AHostsOwnStandsBehindSourceAndObject) {
  Desktop desktop;
  const PlatformOverride<PlatformClipboard> guard(desktop);
  COleDataSource source;
  source.CacheGlobalData(7, std::make_shared<const std::string>("seven"));
  EXPECT_FALSE(source.SetClipboard());
  ASSERT_NE(desktop.put, nullptr);
  EXPECT_EQ(*desktop.put->Block(7), "seven");
  COleDataObject object;
  EXPECT_TRUE(object.AttachClipboard());
  EXPECT_TRUE(object.IsDataAvailable(0xC123));
  EXPECT_EQ(*object.GetGlobalData(0xC123), "block 49443");
}

}  // namespace
