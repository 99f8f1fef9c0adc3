#include "zelbase/errors/ErrorReporterBase.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "zelbase/errors/GenericError.h"

namespace {

class Notebook : public ErrorReporterBase {
 public:
  void Report(const Error& error) override { m_lines.push_back(error.Type() + ": " + error.Format()); }
  const std::vector<std::string>& Lines() const { return m_lines; }

 private:
  std::vector<std::string> m_lines;
};

TEST(ErrorReporterBase, IsAnInterfaceThatNobodyDestroysThrough) {
  static_assert(std::is_abstract_v<ErrorReporterBase>);
  static_assert(!std::has_virtual_destructor_v<ErrorReporterBase>);
  static_assert(!std::is_destructible_v<ErrorReporterBase>);
  static_assert(std::is_destructible_v<Notebook>);
  static_assert(std::is_void_v<decltype(std::declval<ErrorReporterBase&>().Report(std::declval<const Error&>()))>);
}

TEST(ErrorReporterBase, IsCalledThroughTheBase) {
  Notebook notebook;
  ErrorReporterBase& reporter = notebook;
  reporter.Report(GenericError("description", "", "Kind"));
  EXPECT_EQ(notebook.Lines(), std::vector<std::string>{"Kind: description"});
}

}  // namespace
