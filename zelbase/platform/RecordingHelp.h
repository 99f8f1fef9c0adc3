// A help viewer that shows nothing and keeps what it was asked for. Neighbour: PlatformHelp.h, the interface.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "zelbase/platform/PlatformHelp.h"
#include "zelbase/platform/ZelBaseApi.h"

// The members are set and read while nobody asks for help.
//
//   RecordingHelp help;
//   PlatformOverride<PlatformHelp> guard(help);
//   ... help.requests.back().topic ...
class ZELBASE_API RecordingHelp : public PlatformHelp {
 public:
  struct Request {
    std::string file;
    std::optional<std::string> topic;
    bool operator==(const Request&) const = default;
  };

  bool Show(const std::string& file, const std::optional<std::string>& topic) override {
    requests.push_back({file, topic});
    return answer;
  }
  void Beep() override { ++beeps; }

  bool answer = true;             // of Show
  std::vector<Request> requests;  // in order
  int beeps = 0;
};
