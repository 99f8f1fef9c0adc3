#include "zelbase/platform/CDynLinkLibrary.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

std::vector<CDynLinkLibrary*>& Libraries() { return AfxGetAppModuleState()->m_libraryList; }

TEST(CDynLinkLibrary, InitFillsTheRecordInOnce) {
  int module = 0;
  int another = 0;
  AFX_EXTENSION_MODULE record;
  EXPECT_TRUE(AfxInitExtensionModule(record, &module));
  EXPECT_TRUE(record.bInitialized);
  EXPECT_EQ(record.hModule, &module);
  EXPECT_EQ(record.hResource, &module);
  EXPECT_TRUE(AfxInitExtensionModule(record, &another));
  EXPECT_EQ(record.hModule, &module);
}

TEST(CDynLinkLibrary, InitFailsAsOftenAsTold) {
  int module = 0;
  AFX_EXTENSION_MODULE record;
  AfxFailInitExtensionModule(2);
  EXPECT_FALSE(AfxInitExtensionModule(record, &module));
  EXPECT_FALSE(AfxInitExtensionModule(record, &module));
  EXPECT_FALSE(record.bInitialized);
  EXPECT_EQ(record.hModule, nullptr);
  EXPECT_TRUE(AfxInitExtensionModule(record, &module));
  AfxFailInitExtensionModule(5);
  AfxFailInitExtensionModule(-1);
  EXPECT_TRUE(AfxInitExtensionModule(record, &module));
}

TEST(CDynLinkLibrary, ChainsItselfInAtTheFrontAndOut) {
  int one = 0;
  int two = 0;
  AFX_EXTENSION_MODULE first;
  AFX_EXTENSION_MODULE second;
  AfxInitExtensionModule(first, &one);
  AfxInitExtensionModule(second, &two);
  {
    const CDynLinkLibrary a(first);
    const CDynLinkLibrary b(second);
    EXPECT_EQ(Libraries(), (std::vector<CDynLinkLibrary*>{const_cast<CDynLinkLibrary*>(&b), const_cast<CDynLinkLibrary*>(&a)}));
    EXPECT_EQ(b.m_hModule, &two);
    EXPECT_EQ(b.m_hResource, &two);
  }
  EXPECT_TRUE(Libraries().empty());
}

TEST(CDynLinkLibrary, AResourceHandleIsInstalledThroughTheList) {
  int module = 0;
  int language = 0;
  AFX_EXTENSION_MODULE record;
  AfxInitExtensionModule(record, &module);
  const auto library = std::make_unique<CDynLinkLibrary>(record);
  for (CDynLinkLibrary* each : Libraries()) {
    if (each->m_hModule == &module) each->m_hResource = &language;
  }
  EXPECT_EQ(library->m_hResource, &language);
  EXPECT_EQ(record.hResource, &module);
}

TEST(CDynLinkLibrary, TheStateOfTheRunningModuleIsTheApplications) {
  ASSERT_NE(AfxGetModuleState(), nullptr);
  EXPECT_EQ(AfxGetModuleState(), AfxGetAppModuleState());
}

TEST(CDynLinkLibrary, TermDestroysTheLinksOfItsModule) {
  int one = 0;
  int two = 0;
  AFX_EXTENSION_MODULE first;
  AFX_EXTENSION_MODULE second;
  AfxInitExtensionModule(first, &one);
  AfxInitExtensionModule(second, &two);
  new CDynLinkLibrary(first);
  CDynLinkLibrary* const kept = new CDynLinkLibrary(second);
  new CDynLinkLibrary(first);
  AfxTermExtensionModule(first);
  EXPECT_EQ(Libraries(), std::vector<CDynLinkLibrary*>{kept});
  EXPECT_FALSE(first.bInitialized);
  EXPECT_EQ(first.hModule, nullptr);

  AfxTermExtensionModule(first, true);  // no longer filled in
  EXPECT_EQ(Libraries().size(), 1u);
  AfxTermExtensionModule(second);
  EXPECT_TRUE(Libraries().empty());
}

TEST(CDynLinkLibrary, TermOfAllDestroysEveryLink) {
  int one = 0;
  int two = 0;
  AFX_EXTENSION_MODULE first;
  AFX_EXTENSION_MODULE second;
  AfxInitExtensionModule(first, &one);
  AfxInitExtensionModule(second, &two);
  new CDynLinkLibrary(first);
  new CDynLinkLibrary(second);
  AfxTermExtensionModule(first, true);
  EXPECT_TRUE(Libraries().empty());
  AfxTermExtensionModule(second);
}

}  // namespace
