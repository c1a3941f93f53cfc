#include "eos/polar_tables.hpp"

#include <algorithm>
#include <cmath>

namespace tessarel::eos {

PolarConstants polar;

namespace {

using fluid_module::record;

/// Coefficients c0, c1, c2 of one power of eta: c0 + c1 (M - 1)/M + c2 (M - 1)(M - 2)/M^2.
using Row = std::array<double, 3>;
using Correlation = std::array<Row, 5>;

constexpr Correlation dd_a_rows = {{{0.30435038064, 0.95346405973, -1.16100802773},
                                    {-0.13585877707, -1.8396383192, 4.5258606732},
                                    {1.44933285154, 2.0131180118, 0.97512223853},
                                    {0.35569769252, -7.37249576667, -12.2810377713},
                                    {-2.06533084541, 8.23741345333, 5.9397574742}}};
constexpr Correlation dd_b_rows = {{{0.21879385627, -0.58731641193, 3.486957558},
                                    {-1.18964307357, 1.24891317047, -14.9159739347},
                                    {1.16268885692, -0.50852797392, 15.37202186}}};
constexpr Correlation dd_c_rows = {{{-0.06467735252, -0.95208758351, -0.62609792333},
                                    {0.19758818347, 2.99242575222, 1.29246858189},
                                    {-0.80875619458, -2.38026356489, 1.654278309},
                                    {0.69028490492, -0.27012609786, -3.43967436378}}};
constexpr Correlation qq_a_rows = {{{1.237830788, 1.285410878, 1.794295401},
                                    {2.435503144, -11.46561451, 0.769510293},
                                    {1.633090469, 22.08689285, 7.264792255},
                                    {-1.611815241, 7.46913832, 94.48669892},
                                    {6.977118504, -17.19777208, -77.1484579}}};
constexpr Correlation qq_b_rows = {{{0.454271755, -0.813734006, 6.868267516},
                                    {-4.501626435, 10.06402986, -5.173223765},
                                    {3.585886783, -10.87663092, -17.2402066}}};
constexpr Correlation qq_c_rows = {{{-0.500043713, 2.000209381, 3.135827145},
                                    {6.531869153, -6.78386584, 7.247588801},
                                    {-16.01477983, 20.38324603, 3.075947834},
                                    {14.42597018, -10.89598394, 0}}};
constexpr Correlation dq_a_rows = {{{0.697094963, -0.673459279, 0.67034077},
                                    {-0.633554144, -1.425899106, -4.338471826},
                                    {2.945509028, 4.19441392, 7.23416836},
                                    {-1.467027314, 1.0266216, 0}}};
constexpr Correlation dq_b_rows = {
    {{-0.484038322, 0.67651011, -1.167560146}, {1.970405465, -3.013867512, 2.13488432}, {-2.118572671, 0.46742656, 0}}};
constexpr Correlation dq_c_rows = {
    {{0.795009692, -2.099579397, 0}, {3.386863396, -5.941376392, 0}, {0.475106328, -0.178820384, 0}}};

PolarPowers at(const Correlation& rows, double m) {
  const double f1 = (m - 1.0) / m;
  const double f2 = f1 * (m - 2.0) / m;
  PolarPowers powers{};
  for (std::size_t k = 0; k < powers.size(); ++k) powers[k] = rows[k][0] + rows[k][1] * f1 + rows[k][2] * f2;
  return powers;
}

/// Segment number in the correlations, which were fitted up to two segments.
double capped(std::size_t i) {
  return std::min(record.mseg[i], 2.0);
}

/// Fills the pair and triplet tables of one type for the components that `takes_part` accepts.
template <class Condition>
void fill(PairConstants& a, PairConstants& b, TripletConstants& c, const Correlation& a_rows, const Correlation& b_rows,
          const Correlation& c_rows, Condition takes_part) {
  const auto n = static_cast<std::size_t>(record.n);
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j) {
      const bool pair = takes_part(i) && takes_part(j);
      const double m = std::sqrt(capped(i) * capped(j));
      a[i][j] = pair ? at(a_rows, m) : PolarPowers{};
      b[i][j] = pair ? at(b_rows, m) : PolarPowers{};
      for (std::size_t l = 0; l < n; ++l)
        c[i][j][l] = pair && takes_part(l) ? at(c_rows, std::cbrt(capped(i) * capped(j) * capped(l))) : PolarPowers{};
    }
  }
}

constexpr auto every_component = [](std::size_t) { return true; };

}  // namespace

void ddconst() {
  fill(polar.dd_a, polar.dd_b, polar.dd_c, dd_a_rows, dd_b_rows, dd_c_rows, every_component);
}

void qqconst() {
  fill(polar.qq_a, polar.qq_b, polar.qq_c, qq_a_rows, qq_b_rows, qq_c_rows,
       [](std::size_t i) { return record.quapole[i] != 0; });
}

void dqconst() {
  fill(polar.dq_a, polar.dq_b, polar.dq_c, dq_a_rows, dq_b_rows, dq_c_rows, every_component);
}

void setpolarpar() {
  const auto n = static_cast<std::size_t>(record.n);
  if (record.is_quadip) {
    polar.s = 1, polar.e = 3;
  } else if (record.is_dipole) {
    polar.s = polar.e = 1;
  } else if (record.is_quapole) {
    polar.s = polar.e = 2;
  }
  const auto& mu = record.dipole;
  const auto& q = record.quapole;
  const auto& sigma = record.sigma;
  const auto sig = [&](std::size_t i, std::size_t j) { return (sigma[i] + sigma[j]) / 2.0; };
  const auto r = [](std::size_t i) { return 1.0 / record.mseg[i]; };
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j) {
      const double s1 = sig(i, j), s3 = s1 * s1 * s1, s5 = s3 * s1 * s1, s7 = s5 * s1 * s1;
      const double mu2i = mu[i] * mu[i], mu2j = mu[j] * mu[j], q2i = q[i] * q[i], q2j = q[j] * q[j];
      const double rr = r(i) * r(j);
      polar.gamma2[0][j][i] = mu2i * mu2j * rr / s3;
      polar.gamma2[1][j][i] = 0.5625 * q2i * q2j * rr / s7;
      polar.gamma2[2][j][i] = 2.25 * q2i * mu2j * rr / s5;
      for (std::size_t k = 0; k < n; ++k) {
        const double product = s1 * sig(i, k) * sig(j, k), rrr = rr * r(k);
        const double mu2k = mu[k] * mu[k], q2k = q[k] * q[k];
        polar.gamma3[0][k][j][i] = -(4.0 / 3.0) * mu2i * mu2j * mu2k * rrr / product;
        polar.gamma3[1][k][j][i] = 0.5625 * q2i * q2j * q2k * rrr / (product * product * product);
        polar.gamma3[2][k][j][i] = 0;
      }
    }
  }
  // The mixed third-order factor is the one without symmetry: it needs mu(k), Q(j) and a moment of i.
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j) {
      for (std::size_t k = 0; k < n; ++k) {
        if (mu[k] == 0 || q[j] == 0 || (mu[i] == 0 && q[i] == 0)) continue;
        const double product = sig(i, j) * sig(i, k) * sig(j, k);
        polar.gamma3[2][k][j][i] = q[i] * q[i] / sigma[i] * r(i) * r(j) * r(k) * sigma[j] * sigma[k] * mu[k] * mu[k] *
                                   (mu[j] * mu[j] + 1.193735 * q[j] * q[j] / (sigma[j] * sigma[j])) /
                                   (product * product);
      }
    }
  }
}

void update_polar_constants() {
  if (record.is_quapole) qqconst();
  if (record.is_dipole) ddconst();
  if (record.is_quadip) dqconst();
  setpolarpar();
}

}  // namespace tessarel::eos
