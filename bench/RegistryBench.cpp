// Making an object by name: the registries of actions and tools beside a factory of functions in a hash map,
// and one in an ordered map as a first draft would have it.

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/actions/CToolList.h"
#include "zelbase/actions/ZelActionList.h"

namespace {

class ActionCreator : public ZelActionICreator {
 public:
  ZelAction* Create() override { return new ZelAction; }
};

class Ruler : public ZelTool {
 public:
  void Activate() override {}
  void Deactivate() override {}
  void ShowEditor() override {}
  void CloseEditor() override {}
};

class RulerCreator : public ToolICreator {
 public:
  ZelTool* Create() override { return new Ruler; }
};

// Names as groups and tools have them: a common front, and longer than a short string holds.
std::vector<std::string> Names(int count) {
  std::vector<std::string> names;
  for (int i = 0; i < count; ++i) names.push_back("AcquisitionControl." + std::to_string(i * 7919 % count));
  return names;
}

// `create` once for each name in turn.
template <class Create>
auto EachInTurn(const std::vector<std::string>& names, Create create) {
  return [&names, create, next = std::size_t{0}]() mutable {
    create(names[next]);
    next = next + 1 == names.size() ? 0 : next + 1;
  };
}

template <class Object, class Ours, class Make>
void Compare(Comparison& table, const std::string& what, double bar, const std::vector<std::string>& names, Ours& ours, Make make) {
  std::unordered_map<std::string, std::function<std::unique_ptr<Object>()>> hashed;
  std::map<std::string, std::function<std::unique_ptr<Object>()>> ordered;
  for (const std::string& name : names) hashed[name] = ordered[name] = make;
  const auto create = [&ours](const std::string& name) { Keep(std::unique_ptr<Object>(ours.Create(name))); };
  table.Row(what + " (hash map)", 1, "", Comparison::kNoBar, EachInTurn(names, create),
            EachInTurn(names, [&hashed](const std::string& name) { Keep(hashed.at(name)()); }));
  table.Row(what + " (ordered map)", 1, "", bar, EachInTurn(names, create),
            EachInTurn(names, [&ordered](const std::string& name) { Keep(ordered.at(name)()); }));
}

}  // namespace

int main() {
  Comparison table("objects made by name", 9);
  for (const int count : {10, 100, 1000}) {
    const std::vector<std::string> names = Names(count);
    ZelActionList actions;
    CToolList tools;
    auto* const action = new ActionCreator;
    auto* const tool = new RulerCreator;
    for (const std::string& name : names) {
      actions.RegisterActionGroup(name, action);
      tools.RegisterTool(name, tool);
    }
    const std::string of = ", " + std::to_string(count) + " names";
    // The interface takes the name of an action by value, so that the caller's copy of it counts here; the
    // peers take none.
    Compare<ZelAction>(table, "action" + of, 0.6, names, actions, [] { return std::make_unique<ZelAction>(); });
    Compare<ZelTool>(table, "tool" + of, 0.8, names, tools, [] { return std::make_unique<Ruler>(); });
  }
  return table.Finish();
}
