// Puts a test program into a host's locale, and is linked into each of them: with ZELBASE_TEST_LOCALE=de_DE.UTF-8 in the environment each
// test begins with that locale in the C library and in the language, as in a host that asked for its user's own. scripts/test locales sets
// it, so that the whole suite runs under a decimal comma.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <locale>
#include <stdexcept>
#include <string>

namespace {

class HostLocale : public testing::EmptyTestEventListener {
 public:
  explicit HostLocale(std::string name) : m_name(std::move(name)) {}

  // Before each test, since a test may leave with another one.
  void OnTestStart(const testing::TestInfo& /*test*/) override {
    try {
      std::locale::global(std::locale(m_name));
    } catch (const std::runtime_error&) {
      ADD_FAILURE() << "this machine has no locale " << m_name;
    }
    // A run that only seems to have a comma proves nothing.
    EXPECT_STREQ(",", std::localeconv()->decimal_point);
    EXPECT_EQ(',', std::use_facet<std::numpunct<char>>(std::locale()).decimal_point());
  }

 private:
  std::string m_name;
};

const bool kListens = [] {
  const char* const name = std::getenv("ZELBASE_TEST_LOCALE");
  if (name != nullptr && *name != '\0') testing::UnitTest::GetInstance()->listeners().Append(new HostLocale(name));
  return true;
}();

}  // namespace
