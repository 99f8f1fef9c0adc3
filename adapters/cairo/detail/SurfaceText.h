// Texts on a Cairo context: from the suite's bytes to UTF-8, in the font that a LOGFONT asks for. Neighbour: CairoSurface.h,
// which places them.
#pragma once

#include <cairo.h>

#include <string>
#include <string_view>

#include "zelbase/platform/LOGFONT.h"

namespace zelbase::detail {

// Text as Cairo takes it. Bytes that are valid UTF-8 are taken as that, all others as Windows-1252. Control characters, and the
// five bytes that Windows-1252 leaves open, are left out. Of a text longer than `most` bytes the rest is left out.
std::string ToDrawnText(std::string_view text, std::size_t most);

// A text's box on its base line, in pixels: from 0 to `width`, from `ascent` above to `descent` below.
struct TextBox {
  double width = 0.0;
  double ascent = 0.0;
  double descent = 0.0;
};

// Puts the font on a context, lying level. Heights and widths count up to 4096 pixels, whatever their sign is. Height 0 is ten
// points at `dotsPerInch`; a weight from 600 on is bold. A face that is not there is replaced by the system.
void UseFont(cairo_t* context, const LOGFONT& font, int dotsPerInch);

// Of a text from ToDrawnText, in the font in use.
TextBox MeasureText(cairo_t* context, const std::string& text);

}  // namespace zelbase::detail
