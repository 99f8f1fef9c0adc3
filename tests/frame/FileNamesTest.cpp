#include "zelbase/frame/FileNames.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "zelbase/config/FileObject.h"

namespace {

// Made before main, as a host's own static objects are.
const std::string g_early = ZEL_DEF_FILENAME + "|" + REMOTE_ASSISTANCE_FILENAME_TV + "|" + FileObject::CHECKSUM_SECTION;

TEST(FileNames, AreReadableInAHostsStaticInitialiser) { EXPECT_EQ(g_early, "zelcore.ini|TeamViewer.exe|Checksum"); }

TEST(FileNames, AreConstantStrings) {
  static_assert(std::is_same_v<decltype(ZEL_DEF_FILENAME), const std::string>);
  EXPECT_EQ("C:\\" + DEFAULT_NAME + "\\" + TRANSLATOR_INI_FILENAME, "C:\\ZELCORE\\Translator.ini");
}

TEST(FileNames, HaveTheNamesOnDisk) {
  const struct {
    const std::string& name;
    const char* onDisk;
  } rows[] = {
      {ZEL_DEF_FILENAME, "zelcore.ini"},
      {CDF_DEF_FILENAME, "client"},
      {UDF_DEF_FILENAME, "curuser.ini"},
      {DATA_DEF_FILENAME, "DataDef.ini"},
      {INTERFACE_DEF_FILENAME, "InterfaceDef.ini"},
      {ATTRIB_DEF_FILENAME, "AttribDefV2.ini"},
      {DEFAULT_NAME, "ZELCORE"},
      {TRANS_DEF_FILENAME, "Transformations.ini"},
      {PROJECTION_DEF_FILENAME, "Projections.ini"},
      {ELLIPSOID_DEF_FILENAME, "Spheroids.ini"},
      {FILETYPES_DEF_FILENAME, "FileTypes.ini"},
      {TRANS_USR_FILENAME, "Transformations.usr"},
      {PROJECTION_USR_FILENAME, "Projections.usr"},
      {ELLIPSOID_USR_FILENAME, "Spheroids.usr"},
      {T5Q_CFG_FILENAME, "T5QDistribution.ini"},
      {ACTIONS_DEF_FILENAME, "DefaultActions"},
      {ACTIONS_CUST_FILENAME, "CustomActions"},
      {TRANSLATOR_INI_FILENAME, "Translator.ini"},
      {DISPLAY_MANAGER_INI_FILENAME, "DisplayManager.ini"},
      {USER_ACCESS_LEVELS_INI_FILENAME, "UserAccessLevels.ual"},
      {USER_ACCESS_LEVELS_BAK_FILENAME, "UserAccessLevels.bak"},
      {TUI_DEF_FILENAME, "TernaxUI.ini"},
      {ZELCORE_RELEASE_NOTES_FILENAME, "ZELCORE release notes.pdf"},
      {REMOTE_ASSISTANCE_FILENAME, "VESOK Support.exe"},
      {REMOTE_ASSISTANCE_FILENAME_TV, "TeamViewer.exe"},
  };
  for (const auto& row : rows) EXPECT_EQ(row.name, row.onDisk);
}

}  // namespace
