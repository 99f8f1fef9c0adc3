#include "CairoPicture.h"

#include <cairo-svg.h>

#include <cmath>
#include <memory>

namespace zel {
namespace {

constexpr double kPixels = 2.0;  // of a PNG for one unit

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Pen = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

void Draw(cairo_surface_t* surface, double scale, const std::function<void(cairo_t*)>& draw) {
  const Pen pen(cairo_create(surface), cairo_destroy);
  cairo_scale(pen.get(), scale, scale);
  cairo_set_source_rgb(pen.get(), 1, 1, 1);
  cairo_paint(pen.get());
  draw(pen.get());
}

}  // namespace

bool SaveCairoPicture(const std::string& path, double width, double height, const std::function<void(cairo_t*)>& draw) {
  if (path.ends_with(".png")) {
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(std::ceil(width * kPixels)),
                                                     static_cast<int>(std::ceil(height * kPixels))),
                          cairo_surface_destroy);
    Draw(surface.get(), kPixels, draw);
    return cairo_surface_write_to_png(surface.get(), path.c_str()) == CAIRO_STATUS_SUCCESS;
  }
  const Surface surface(cairo_svg_surface_create(path.c_str(), width, height), cairo_surface_destroy);
  Draw(surface.get(), 1.0, draw);
  cairo_surface_finish(surface.get());
  return cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS;
}

void SetFont(cairo_t* pen, double factor) {
  cairo_select_font_face(pen, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, factor > 1 ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(pen, kFontSize * factor);
}

double TextWidth(const std::string& text, double factor) {
  const Surface scratch(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1), cairo_surface_destroy);
  const Pen pen(cairo_create(scratch.get()), cairo_destroy);
  SetFont(pen.get(), factor);
  cairo_text_extents_t extents;
  cairo_text_extents(pen.get(), text.c_str(), &extents);
  return extents.x_advance;
}

void DrawText(cairo_t* pen, double x, double y, const std::string& text, double factor) {
  SetFont(pen, factor);
  cairo_set_source_rgb(pen, kInkRed, kInkGreen, kInkBlue);
  cairo_move_to(pen, x, y);
  cairo_show_text(pen, text.c_str());
}

}  // namespace zel
