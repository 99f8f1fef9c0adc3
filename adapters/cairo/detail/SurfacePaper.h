// What a drawing surface draws on: Cairo's surface with its context, and the way past both to the pixels of an image. Neighbours:
// CairoSurface.h, whose operations paint here; PixelCanvas.h, the pixels.
#pragma once

#include <cairo.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/cairo/CairoSurface.h"
#include "adapters/cairo/detail/PixelCanvas.h"

namespace zelbase::detail {

using CairoSurfacePtr = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using CairoContextPtr = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

// White at the beginning. Cairo and the direct way take turns; each sees what the other has painted.
class SurfacePaper {
 public:
  SurfacePaper(CairoFormat format, int width, int height, int dotsPerInch);
  SurfacePaper(const SurfacePaper&) = delete;
  SurfacePaper& operator=(const SurfacePaper&) = delete;

  bool IsGood() const;
  bool IsImage() const { return m_format == CairoFormat::Png; }

  // For painting by Cairo; null when the paper is not good.
  cairo_t* Context();

  // For asking Cairo, about a text's size, say; null likewise.
  cairo_t* Questions() const { return IsGood() ? m_context.get() : nullptr; }

  // For painting pixels; without any on a sheet and when the paper could not be made.
  PixelCanvas& Pixels();

  // What may be painted, on both ways; cut to the paper.
  void SetClip(const CRect& clip);
  const CRect& Clip() const { return m_clip; }

  // See CairoSurface::Save.
  bool Save(const std::function<bool(std::string_view)>& write);

 private:
  void MakeImage(int width, int height);
  void MakeSheet(int width, int height, int dotsPerInch);
  bool CloseSheet();

  const CairoFormat m_format;
  std::string m_bytes;  // what a sheet has written
  CRect m_all;
  CRect m_clip;
  CairoSurfacePtr m_surface{nullptr, cairo_surface_destroy};
  CairoContextPtr m_context{nullptr, cairo_destroy};  // null: not made, or a sheet that is closed
  PixelCanvas m_pixels;
  bool m_isDirect = false;    // pixels may have been painted since Cairo was last in use
  bool m_isComplete = false;  // m_bytes is a whole sheet
};

}  // namespace zelbase::detail
