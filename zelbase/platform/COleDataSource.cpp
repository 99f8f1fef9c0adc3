#include "zelbase/platform/COleDataSource.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr unsigned int kBlockOfMemory = 1;

}  // namespace

// Never changed once it is made, so that contents handed out stay as they were.
class COleDataSource::Offers final : public ClipboardContent {
 public:
  std::vector<FORMATETC> Formats() const override {
    std::vector<FORMATETC> formats;
    for (const auto& [details, block] : m_offers) formats.push_back(details);
    return formats;
  }

  HGLOBAL Block(unsigned short format) const override {
    const auto found = std::find_if(m_offers.begin(), m_offers.end(), OfFormat{format});
    return found == m_offers.end() ? nullptr : found->second;
  }

  std::shared_ptr<const Offers> With(const FORMATETC& details, HGLOBAL block) const {
    auto offers = std::make_shared<Offers>(*this);
    const auto found = std::find_if(offers->m_offers.begin(), offers->m_offers.end(), OfFormat{details.cfFormat});
    if (found == offers->m_offers.end()) {
      offers->m_offers.emplace_back(details, std::move(block));
    } else {
      *found = {details, std::move(block)};
    }
    return offers;
  }

 private:
  using Offer = std::pair<FORMATETC, HGLOBAL>;

  struct OfFormat {
    bool operator()(const Offer& offer) const { return offer.first.cfFormat == format; }
    unsigned short format;
  };

  std::vector<Offer> m_offers;
};

COleDataSource::COleDataSource() { Empty(); }

COleDataSource::~COleDataSource() = default;

void COleDataSource::CacheGlobalData(unsigned short format, HGLOBAL block, const FORMATETC* details) {
  if (format == 0 || block == nullptr) return;
  FORMATETC offered = details != nullptr ? *details : FORMATETC();
  offered.cfFormat = format;
  offered.tymed = kBlockOfMemory;
  m_offers = m_offers->With(offered, std::move(block));
}

void COleDataSource::Empty() { m_offers = std::make_shared<const Offers>(); }

bool COleDataSource::SetClipboard() const { return PlatformService<PlatformClipboard>::Current().Put(m_offers); }

std::shared_ptr<const ClipboardContent> COleDataSource::Content() const { return m_offers; }
