// The track of a survey: the observations of a file through the navigation filter. Neighbours: TrackFile.h and Navigation.h, which read
// and filter; Survey.h, what comes out.
#pragma once

#include <string>

#include "Navigation.h"
#include "survey/Survey.h"

namespace zel {

// Fills track and vessel position. `origin` is the moment, in milliseconds since 1970, from which the file counts its seconds. What cannot
// be used is reported.
void ReadTrack(const std::string& path, double origin, const NavigationOptions& options, Survey& survey);

}  // namespace zel
