#include "survey/PictureFile.h"

#include <cmath>
#include <string_view>

#include "OutputFile.h"

namespace zel {

int DotsPerInch(int partsPerMillimetre) { return static_cast<int>(std::lround(25.4 * partsPerMillimetre)); }

bool SavePicture(CairoSurface& surface, const std::string& path, std::string& reason) {
  OutputFile file(path);
  const auto write = [&file](std::string_view bytes) {
    file.Write(bytes);
    return file.IsGood();
  };
  const bool saved = surface.Save(write) && file.Finish();
  if (!saved) reason = "cannot write \"" + path + "\"";
  return saved;
}

}  // namespace zel
