// Expected values: dense inverses by pivoted elimination.

#include "calc/adjustment/facteurs_par_blocs.h"

#include <gtest/gtest.h>
#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <random>

namespace veltora {
namespace {

using Dense = Eigen::MatrixXd;

FacteursParBlocs::Matrice lowerHalf(const Dense& full) {
  const Dense lower = full.triangularView<Eigen::Lower>();
  return lower.sparseView();
}

/// Sums of squares of three unknowns each, near to one another as in a survey, or anywhere.
Dense normalMatrix(int n, int rows, int reach, unsigned seed) {
  std::mt19937 random(seed);
  Dense sum = 0.1 * Dense::Identity(n, n);
  for (int row = 0; row < rows; ++row) {
    Eigen::VectorXd a = Eigen::VectorXd::Zero(n);
    const int first = static_cast<int>(random() % static_cast<unsigned>(n));
    for (int term = 0; term < 3; ++term)
      a[std::min(n - 1, first + static_cast<int>(random() % static_cast<unsigned>(reach)))] +=
          static_cast<double>(random() % 2001) / 1000.0 - 1.0;
    sum += a * a.transpose();
  }
  return sum;
}

double worstElement(const FacteursParBlocs& factors, const Dense& N, const Dense& inverse) {
  double worst = 0.0;
  for (int i = 0; i < N.rows(); ++i)
    for (int j = 0; j < N.cols(); ++j)
      if (N(i, j) != 0.0) worst = std::max(worst, std::abs(factors.inverse(i, j) - inverse(i, j)));
  return worst;
}

TEST(FacteursParBlocs, solvesAndInvertsAsDenseMatricesDo) {
  struct Case {
    int unknowns;
    int rows;
    int reach;
  };
  // One unknown; islands; a chain; fill that joins many columns; one block wider than the largest.
  for (const Case& c : {Case{1, 1, 1}, {12, 4, 12}, {150, 400, 5}, {220, 330, 220}, {180, 900, 180}}) {
    SCOPED_TRACE(c.unknowns);
    const Dense N = normalMatrix(c.unknowns, c.rows, c.reach, 7);
    const Dense inverse = N.inverse();
    const Dense b = Dense::Random(c.unknowns, 3);
    FacteursParBlocs factors;
    factors.analyser(lowerHalf(N));
    for (const double scale : {1.0, 4.0}) {  // one pattern, other values
      ASSERT_TRUE(factors.factoriser(lowerHalf(scale * N)));
      const double bound = 1e-11 * inverse.norm() / scale;
      EXPECT_LT((factors.resoudre(b) - inverse * b / scale).norm(), bound * b.norm());
      EXPECT_LT((factors.resoudre(b.col(1)) - inverse * b.col(1) / scale).norm(), bound * b.norm());
      EXPECT_LT((factors.formeInverse(b) - b.transpose() * inverse * b / scale).norm(),
                bound * b.squaredNorm());
      // Most blocks are not reached from one unknown.
      const Dense small = 1e-6 * Dense::Identity(c.unknowns, c.unknowns).col(c.unknowns / 2);
      EXPECT_NEAR(factors.formeInverse(small)(0, 0) * 1e12, inverse(c.unknowns / 2, c.unknowns / 2) / scale,
                  bound);
      factors.inverser();
      EXPECT_LT(worstElement(factors, N, inverse / scale), bound);
    }
  }
}

TEST(FacteursParBlocs, hasNoElementBetweenIslands) {
  FacteursParBlocs factors;
  factors.analyser(lowerHalf(2.0 * Dense::Identity(3, 3)));
  ASSERT_TRUE(factors.factoriser(lowerHalf(2.0 * Dense::Identity(3, 3))));
  factors.inverser();
  EXPECT_EQ(factors.inverse(1, 1), 0.5);
  EXPECT_EQ(factors.inverse(0, 2), 0.0);
}

TEST(FacteursParBlocs, holdsVanishingPivotsAndTellsThem) {
  // Joined to three others, unknown 11 is eliminated first; what it is joined to lies far apart.
  Dense N = normalMatrix(60, 300, 12, 3) + Dense::Identity(60, 60);
  N.row(11).setZero();
  N.col(11).setZero();
  for (const int other : {0, 30, 59}) N(11, other) = N(other, 11) = 0.25;
  N(11, 11) = 1.0;
  FacteursParBlocs factors;
  FacteursParBlocs::Matrice lower = lowerHalf(N);
  factors.analyser(lower);
  lower.coeffRef(11, 11) = 0.0;
  EXPECT_FALSE(factors.factoriser(lower));
  for (int i = 0; i < 60; ++i) {
    EXPECT_EQ(factors.pivot(i) == 0.0, i == 11) << i;
    EXPECT_TRUE(std::isfinite(factors.pivot(i))) << i;
  }
  std::vector<int> order = factors.ordre();
  std::sort(order.begin(), order.end());
  for (int i = 0; i < 60; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
}

TEST(FacteursParBlocs, givesTheSameOnMachinesWithOtherCaches) {
  const Dense N = normalMatrix(200, 2000, 200, 5);
  const auto solved = [&N] {
    FacteursParBlocs factors;
    factors.analyser(lowerHalf(N));
    factors.factoriser(lowerHalf(N));
    factors.inverser();
    Dense all = factors.resoudre(Dense::Identity(200, 7));
    for (int i = 0; i < 200; ++i) all(i, 0) = factors.inverse(i, (i * 7) % 200);
    return all;
  };
  const std::ptrdiff_t near = Eigen::l1CacheSize();
  const std::ptrdiff_t middle = Eigen::l2CacheSize();
  const std::ptrdiff_t far = Eigen::l3CacheSize();
  const Dense first = solved();
  EXPECT_EQ(Eigen::l1CacheSize(), near);
  Eigen::setCpuCacheSizes(4 * 1024, 16 * 1024, 64 * 1024);
  const Dense second = solved();
  Eigen::setCpuCacheSizes(near, middle, far);
  EXPECT_EQ(first, second);
}

}  // namespace
}  // namespace veltora
