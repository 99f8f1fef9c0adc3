#include "adapters/cairo/detail/SurfacePaper.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <algorithm>

namespace zelbase::detail {
namespace {

constexpr int kMostAcross = 32767;
constexpr long long kMostPixels = 1LL << 28;
constexpr int kLeastDots = 10;
constexpr int kMostDots = 10000;
constexpr double kPdfUnitsAnInch = 72.0;
constexpr double kSvgUnitsAnInch = 96.0;

using Writer = std::function<bool(std::string_view)>;

bool IsPossible(int width, int height, int dotsPerInch) {
  return width >= 1 && width <= kMostAcross && height >= 1 && height <= kMostAcross &&
         static_cast<long long>(width) * height <= kMostPixels && dotsPerInch >= kLeastDots && dotsPerInch <= kMostDots;
}

std::string_view View(const unsigned char* data, unsigned int length) { return {reinterpret_cast<const char*>(data), length}; }

// No exception may pass through Cairo.
cairo_status_t Append(void* bytes, const unsigned char* data, unsigned int length) {
  try {
    static_cast<std::string*>(bytes)->append(View(data, length));
    return CAIRO_STATUS_SUCCESS;
  } catch (...) {
    return CAIRO_STATUS_NO_MEMORY;
  }
}

bool Accepts(const Writer& write, std::string_view bytes) {
  try {
    return write(bytes);
  } catch (...) {
    return false;
  }
}

cairo_status_t HandOver(void* write, const unsigned char* data, unsigned int length) {
  return Accepts(*static_cast<const Writer*>(write), View(data, length)) ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
}

}  // namespace

SurfacePaper::SurfacePaper(CairoFormat format, int width, int height, int dotsPerInch) : m_format(format) {
  if (!IsPossible(width, height, dotsPerInch)) return;
  if (IsImage()) {
    MakeImage(width, height);
  } else {
    MakeSheet(width, height, dotsPerInch);
  }
  if (m_context == nullptr) return;
  m_all = CRect(0, 0, width, height);
  m_clip = m_all;
  cairo_set_source_rgb(m_context.get(), 1, 1, 1);
  cairo_paint(m_context.get());
}

void SurfacePaper::MakeImage(int width, int height) {
  m_surface.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
  if (cairo_surface_status(m_surface.get()) != CAIRO_STATUS_SUCCESS) return;
  m_context.reset(cairo_create(m_surface.get()));
  m_pixels = PixelCanvas(reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(m_surface.get())),
                         cairo_image_surface_get_stride(m_surface.get()) / static_cast<int>(sizeof(std::uint32_t)), width, height);
}

void SurfacePaper::MakeSheet(int width, int height, int dotsPerInch) {
  const bool isPdf = m_format == CairoFormat::Pdf;
  if (!isPdf && m_format != CairoFormat::Svg) return;
  const double unit = (isPdf ? kPdfUnitsAnInch : kSvgUnitsAnInch) / dotsPerInch;
  const auto create = isPdf ? cairo_pdf_surface_create_for_stream : cairo_svg_surface_create_for_stream;
  m_surface.reset(create(Append, &m_bytes, width * unit, height * unit));
  if (cairo_surface_status(m_surface.get()) != CAIRO_STATUS_SUCCESS) return;
  if (!isPdf) cairo_svg_surface_set_document_unit(m_surface.get(), CAIRO_SVG_UNIT_PX);
  m_context.reset(cairo_create(m_surface.get()));
  cairo_scale(m_context.get(), unit, unit);
}

bool SurfacePaper::IsGood() const {
  return m_context != nullptr && cairo_status(m_context.get()) == CAIRO_STATUS_SUCCESS &&
         cairo_surface_status(m_surface.get()) == CAIRO_STATUS_SUCCESS;
}

cairo_t* SurfacePaper::Context() {
  if (!IsGood()) return nullptr;
  if (m_isDirect) cairo_surface_mark_dirty(m_surface.get());
  m_isDirect = false;
  return m_context.get();
}

PixelCanvas& SurfacePaper::Pixels() {
  if (!m_isDirect && m_context != nullptr) {
    cairo_surface_flush(m_surface.get());
    m_isDirect = true;
  }
  return m_pixels;
}

void SurfacePaper::SetClip(const CRect& clip) {
  cairo_t* const context = Context();
  if (context == nullptr) return;
  m_clip = CRect(std::max(clip.left, 0), std::max(clip.top, 0), std::min(clip.right, m_all.right), std::min(clip.bottom, m_all.bottom));
  if (m_clip.IsRectEmpty()) m_clip = CRect();
  m_pixels.SetClip(m_clip);
  cairo_reset_clip(context);
  cairo_new_path(context);
  cairo_rectangle(context, m_clip.left, m_clip.top, m_clip.Width(), m_clip.Height());
  cairo_clip(context);
}

bool SurfacePaper::CloseSheet() {
  if (m_isComplete) return true;
  if (!IsGood()) return false;
  m_context.reset();
  cairo_surface_finish(m_surface.get());
  m_isComplete = cairo_surface_status(m_surface.get()) == CAIRO_STATUS_SUCCESS;
  return m_isComplete;
}

bool SurfacePaper::Save(const Writer& write) {
  if (IsImage()) {
    auto copy = write;  // Cairo takes a pointer that is not const
    return Context() != nullptr && cairo_surface_write_to_png_stream(m_surface.get(), HandOver, &copy) == CAIRO_STATUS_SUCCESS;
  }
  return CloseSheet() && Accepts(write, m_bytes);
}

}  // namespace zelbase::detail
