// Positions through the geodesy plug-in beside the same operations of PROJ called by hand: what its checks,
// its turned axes and the way through the interface cost.

#include <proj.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/geodesy/GeoCoordSys.h"
#include "zelbase/geodesy/ZelGeoCoordSysList.h"
#include "zelbase/geodesy/ZelGeoCoordSysLoader.h"

namespace {

constexpr int kBarPositions = 100000;
constexpr double kBar = 0.9;

struct FreePj {
  void operator()(PJ* operation) const { proj_destroy(operation); }
};
using PjPointer = std::unique_ptr<PJ, FreePj>;

// x, y as the peer takes them.
PjPointer MakePeer(const char* from, const char* to) {
  const PjPointer operation(proj_create_crs_to_crs(nullptr, from, to, nullptr));
  return PjPointer(proj_normalize_for_visualization(nullptr, operation.get()));
}

struct Positions {
  std::vector<double> x, y;
};

// Over a region of a few degrees.
Positions MakePositions(int count, double x, double y, double step) {
  Positions positions;
  for (int i = 0; i < count; ++i) {
    positions.x.push_back(x + step * (i % 317));
    positions.y.push_back(y + step * (i % 211));
  }
  return positions;
}

template <class Call>
double SumOver(const Positions& positions, Call call) {
  double sum = 0.0;
  for (std::size_t i = 0; i < positions.x.size(); ++i) sum += call(positions.x[i], positions.y[i]);
  return sum;
}

auto CallPeer(PJ* operation, PJ_DIRECTION direction) {
  return [operation, direction](double x, double y) { return proj_trans(operation, direction, proj_coord(x, y, 0, 0)).xy.x; };
}

bool AreSame(const char* what, double ours, double peer) {
  if (std::abs(ours - peer) <= 1e-9 * std::abs(peer)) return true;
  std::printf("%s differ: %.17g, %.17g\n", what, ours, peer);
  return false;
}

}  // namespace

int main() {
  std::filesystem::current_path(ZELBASE_PLUGIN_FOLDER);
  if (!ZelGeoCoordSysLoader::Instance().LoadDLL("ZELCoordSys", nullptr)) return 1;
  const std::unique_ptr<GeoCoordSys> system(dynamic_cast<GeoCoordSys*>(ZelGeoCoordSysList::GetCoordSysList().Create("PROJ")));
  if (system == nullptr || !system->Select("EPSG:32631") || !system->SelectTarget("EPSG:28992")) return 1;
  const PjPointer utm = MakePeer("EPSG:4326", "EPSG:32631"), dutch = MakePeer("EPSG:32631", "EPSG:28992");

  const auto forward = [&system](double x, double y) {
    double easting = 0.0, northing = 0.0;
    system->Forward(y, x, easting, northing);
    return easting;
  };
  const auto inverse = [&system](double x, double y) {
    double latitude = 0.0, longitude = 0.0;
    system->Inverse(x, y, latitude, longitude);
    return longitude;
  };
  const auto convert = [&system](double x, double y) {
    double easting = 0.0, northing = 0.0;
    system->Convert(x, y, easting, northing);
    return easting;
  };
  const auto peerForward = CallPeer(utm.get(), PJ_FWD), peerInverse = CallPeer(utm.get(), PJ_INV),
             peerConvert = CallPeer(dutch.get(), PJ_FWD);
  Comparison table("positions, one call each; the peer is proj_trans", 15);
  for (const int count : {1000, 10000, kBarPositions}) {
    const Positions globe = MakePositions(count, 3.0, 51.0, 0.01), grid = MakePositions(count, 600000.0, 5700000.0, 300.0);
    if (!AreSame("forward", SumOver(globe, forward), SumOver(globe, peerForward)) ||
        !AreSame("inverse", SumOver(grid, inverse), SumOver(grid, peerInverse)) ||
        !AreSame("convert", SumOver(grid, convert), SumOver(grid, peerConvert))) {
      return 1;
    }
    const double bar = Comparison::BarAt(count == kBarPositions, kBar);
    const std::string of = ", " + Grouped(static_cast<std::size_t>(count));
    table.Row(
        "latitude, longitude to UTM" + of, count, "pos", bar, [&] { Keep(SumOver(globe, forward)); },
        [&] { Keep(SumOver(globe, peerForward)); });
    table.Row(
        "UTM to latitude, longitude" + of, count, "pos", bar, [&] { Keep(SumOver(grid, inverse)); },
        [&] { Keep(SumOver(grid, peerInverse)); });
    table.Row(
        "UTM to the Dutch grid" + of, count, "pos", bar, [&] { Keep(SumOver(grid, convert)); }, [&] { Keep(SumOver(grid, peerConvert)); });
  }
  return table.Finish();
}
