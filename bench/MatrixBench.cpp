// Product, inverse and singular value decomposition of square matrices against Eigen's, built with the same
// flags. Both must find the same numbers, but for rounding.

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>

#include "bench/Compare.h"
#include "zelbase/numerics/Matrix.h"

namespace {

// A matrix far from singular: random elements and a heavy diagonal.
Matrix MakeMatrix(unsigned int n, unsigned int seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> uniform(-1.0, 1.0);
  Matrix matrix(n, n);
  for (int r = 0; r < static_cast<int>(n); ++r) {
    for (int c = 0; c < static_cast<int>(n); ++c) matrix[r][c] = uniform(random) + (r == c ? 2.0 : 0.0);
  }
  return matrix;
}

template <class EigenMatrix>
EigenMatrix ToEigen(const Matrix& matrix) {
  const auto rows = static_cast<int>(matrix.NumRows());
  const auto cols = static_cast<int>(matrix.NumColumns());
  EigenMatrix copy(rows, cols);
  for (int r = 0; r < rows; ++r) {
    for (int c = 0; c < cols; ++c) copy(r, c) = matrix[r][c];
  }
  return copy;
}

bool AreNear(const Matrix& ours, const Eigen::MatrixXd& theirs) {
  const double scale = 1.0 + theirs.cwiseAbs().maxCoeff();
  return (ToEigen<Eigen::MatrixXd>(ours) - theirs).cwiseAbs().maxCoeff() < 1e-10 * scale;
}

bool SameSingularValues(const Matrix& w, const Eigen::VectorXd& theirs) {
  Eigen::VectorXd ours = ToEigen<Eigen::MatrixXd>(w).diagonal();
  std::sort(ours.data(), ours.data() + ours.size(), [](double a, double b) { return a > b; });
  return (ours - theirs).cwiseAbs().maxCoeff() < 1e-10 * (1.0 + theirs.maxCoeff());
}

bool CompareProduct(Comparison& table, unsigned int n) {
  const Matrix a = MakeMatrix(n, n);
  const Matrix b = MakeMatrix(n, n + 1);
  const auto eigenA = ToEigen<Eigen::MatrixXd>(a);
  const auto eigenB = ToEigen<Eigen::MatrixXd>(b);
  table.Row(
      "product, " + std::to_string(n), 1, "op", 1.0, [&] { Keep(a * b); },
      [&] {
        const Eigen::MatrixXd product = eigenA * eigenB;
        Keep(product);
      });
  return AreNear(a * b, eigenA * eigenB);
}

bool CompareInverse(Comparison& table, unsigned int n) {
  const Matrix a = MakeMatrix(n, n);
  const auto eigenA = ToEigen<Eigen::MatrixXd>(a);
  table.Row(
      "inverse, " + std::to_string(n), 1, "op", 1.0, [&] { Keep(a.inv()); },
      [&] {
        const Eigen::MatrixXd inverse = eigenA.inverse();
        Keep(inverse);
      });
  return AreNear(a.inv(), eigenA.inverse());
}

bool CompareSVD(Comparison& table, unsigned int n) {
  constexpr unsigned int kVectors = Eigen::ComputeFullU | Eigen::ComputeFullV;
  const Matrix a = MakeMatrix(n, n);
  const auto eigenA = ToEigen<Eigen::MatrixXd>(a);
  Matrix u, w, v;
  const auto ours = [&] { Keep(a.SVD(u, w, v)); };
  const std::string what = "SVD, " + std::to_string(n);
  table.Row(what + ", JacobiSVD", 1, "op", 1.0, ours, [&] {
    const Eigen::JacobiSVD<Eigen::MatrixXd> svd(eigenA, kVectors);
    Keep(svd);
  });
  table.Row(what + ", BDCSVD", 1, "op", 0.5, ours, [&] {
    const Eigen::BDCSVD<Eigen::MatrixXd> svd(eigenA, kVectors);
    Keep(svd);
  });
  const Eigen::BDCSVD<Eigen::MatrixXd> svd(eigenA, kVectors);
  return SameSingularValues(w, svd.singularValues()) && AreNear(u.trn() * w * v.trn(), eigenA);
}

// For information: a size that the compiler knows, which ours never is.
void CompareFixed(Comparison& table) {
  const Matrix a = MakeMatrix(4, 4);
  const Matrix b = MakeMatrix(4, 5);
  const auto eigenA = ToEigen<Eigen::Matrix4d>(a);
  const auto eigenB = ToEigen<Eigen::Matrix4d>(b);
  table.Row(
      "product, 4, Eigen of fixed size", 1, "op", Comparison::kNoBar, [&] { Keep(a * b); },
      [&] {
        const Eigen::Matrix4d product = eigenA * eigenB;
        Keep(product);
      });
  table.Row(
      "inverse, 4, Eigen of fixed size", 1, "op", Comparison::kNoBar, [&] { Keep(a.inv()); },
      [&] {
        const Eigen::Matrix4d inverse = eigenA.inverse();
        Keep(inverse);
      });
}

}  // namespace

int main() {
  Comparison table("matrices (peer: Eigen, dynamic sizes)");
  bool same = true;
  for (const unsigned int n : {4u, 32u, 100u, 200u}) same = CompareProduct(table, n) && same;
  for (const unsigned int n : {4u, 32u, 100u, 200u}) same = CompareInverse(table, n) && same;
  for (const unsigned int n : {4u, 32u, 100u, 200u}) same = CompareSVD(table, n) && same;
  CompareFixed(table);
  const int result = table.Finish();
  std::printf("same numbers: %s\n", same ? "yes" : "NO");
  return same ? result : 1;
}
