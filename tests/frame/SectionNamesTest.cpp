#include "zelbase/frame/SectionNames.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

TEST(SectionNames, AreConstantCharacterArrays) {
  static_assert(std::is_same_v<decltype(HEADER_SECTION), const char[7]>);
  static_assert(sizeof(COORDSYSTEM_BACKUP_SECTION) == 19);
}

TEST(SectionNames, HaveTheNamesInTheFiles) {
  const struct {
    const char* name;
    const char* inFile;
  } rows[] = {
      {HEADER_SECTION, "Header"},
      {FILES_SECTION, "Files"},
      {LANGUAGE_SECTION, "Language"},
      {STARTUP_SECTION, "Startup"},
      {DATA_PATH_SECTION, "DataPath"},
      {USER_PROFILE_SECTION, "UserProfile"},
      {PERMISSION_SECTION, "Permissions"},
      {PROGRAMS_SECTION, "Programs"},
      {VESSEL_SECTION, "Vessel"},
      {NETWORK_SECTION, "Network"},
      {DEVICES_SECTION, "Devices"},
      {COMPUTATIONS_SECTION, "Computations"},
      {VIEWS_SECTION, "Views"},
      {LOGGING_SECTION, "Logging"},
      {EXPORT_SECTION, "Export formats"},
      {GUIDANCE_SECTION, "Guidance"},
      {CUSTOMER_SECTION, "Customer"},
      {TOOL_SECTION, "Tools"},
      {SPHEROID_SECTION, "Spheroid"},
      {TRANSFORMATION_SECTION, "Transformation"},
      {PROJECTION_SECTION, "Projection"},
      {UNITS_SECTION, "Units"},
      {FORMATS_SECTION, "Formats"},
      {APPLICATION_SECTION, "Application"},
      {COORDSYSTEM_BACKUP_SECTION, "CoordSystem Backup"},
      {COORDSYSTEM_SECTION, "CoordSystem"},
  };
  for (const auto& row : rows) EXPECT_STREQ(row.name, row.inFile);
}

}  // namespace
