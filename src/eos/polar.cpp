#include "eos/polar.hpp"

#include <algorithm>

namespace tessarel::eos {

using fluid::Parameters;

namespace {

/// Coefficients c0, c1, c2 of one power of eta: c0 + c1 (M - 1)/M + c2 (M - 1)(M - 2)/M^2.
using Row = std::array<double, 3>;
using Correlation = std::array<Row, 5>;

// Dipole-dipole: Gross & Vrabec 2006, doi:10.1002/aic.10683.
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
// Quadrupole-quadrupole: Gross 2005, doi:10.1002/aic.10502.
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
// Dipole-quadrupole: Vrabec & Gross 2008, doi:10.1021/jp072619u.
constexpr Correlation dq_a_rows = {{{0.697094963, -0.673459279, 0.67034077},
                                    {-0.633554144, -1.425899106, -4.338471826},
                                    {2.945509028, 4.19441392, 7.23416836},
                                    {-1.467027314, 1.0266216, 0}}};
constexpr Correlation dq_b_rows = {
    {{-0.484038322, 0.67651011, -1.167560146}, {1.970405465, -3.013867512, 2.13488432}, {-2.118572671, 0.46742656, 0}}};
constexpr Correlation dq_c_rows = {
    {{0.795009692, -2.099579397, 0}, {3.386863396, -5.941376392, 0}, {0.475106328, -0.178820384, 0}}};

Polar::Powers powers_at(const Correlation& rows, double m) {
  const double f1 = (m - 1.0) / m;
  const double f2 = f1 * (m - 2.0) / m;
  Polar::Powers powers{};
  for (std::size_t k = 0; k < powers.size(); ++k) powers[k] = rows[k][0] + rows[k][1] * f1 + rows[k][2] * f2;
  return powers;
}

/// Segment number in the correlations, which were fitted up to two segments.
double capped(const Parameters& p, std::size_t i) {
  return std::min(p.mseg[i], 2.0);
}

/// The quadrupole integrals are those of quadrupoles alone; the others do not depend on the moments.
bool takes_part(int type, const Parameters& p, std::size_t i) {
  return type != 1 || p.quapole[i] != 0;
}

constexpr const Correlation* a_rows[] = {&dd_a_rows, &qq_a_rows, &dq_a_rows};
constexpr const Correlation* b_rows[] = {&dd_b_rows, &qq_b_rows, &dq_b_rows};
constexpr const Correlation* c_rows[] = {&dd_c_rows, &qq_c_rows, &dq_c_rows};

Polar::Powers pair_powers(const Correlation& rows, int type, const Parameters& p, std::size_t i, std::size_t j) {
  if (!takes_part(type, p, i) || !takes_part(type, p, j)) return {};
  return powers_at(rows, std::sqrt(capped(p, i) * capped(p, j)));
}

}  // namespace

Polar::Powers Polar::pair_a(int type, const Parameters& p, std::size_t i, std::size_t j) {
  return pair_powers(*a_rows[type], type, p, i, j);
}
Polar::Powers Polar::pair_b(int type, const Parameters& p, std::size_t i, std::size_t j) {
  return pair_powers(*b_rows[type], type, p, i, j);
}
Polar::Powers Polar::triplet_c(int type, const Parameters& p, std::size_t i, std::size_t j, std::size_t k) {
  if (!takes_part(type, p, i) || !takes_part(type, p, j) || !takes_part(type, p, k)) return {};
  return powers_at(*c_rows[type], std::cbrt(capped(p, i) * capped(p, j) * capped(p, k)));
}

double Polar::gamma2(int type, const Parameters& p, std::size_t i, std::size_t j) {
  const auto& mu = p.dipole;
  const auto& q = p.quapole;
  const double s1 = mean_diameter(p, i, j), s3 = s1 * s1 * s1, s5 = s3 * s1 * s1, s7 = s5 * s1 * s1;
  const double mu2i = mu[i] * mu[i], mu2j = mu[j] * mu[j], q2i = q[i] * q[i], q2j = q[j] * q[j];
  const double rr = 1.0 / p.mseg[i] * (1.0 / p.mseg[j]);
  if (type == 0) return mu2i * mu2j * rr / s3;
  if (type == 1) return 0.5625 * q2i * q2j * rr / s7;
  return 2.25 * q2i * mu2j * rr / s5;
}

double Polar::gamma3(int type, const Parameters& p, std::size_t i, std::size_t j, std::size_t k) {
  const auto& mu = p.dipole;
  const auto& q = p.quapole;
  const auto& sigma = p.sigma;
  const double product = mean_diameter(p, i, j) * mean_diameter(p, i, k) * mean_diameter(p, j, k);
  const double rrr = 1.0 / p.mseg[i] * (1.0 / p.mseg[j]) * (1.0 / p.mseg[k]);
  if (type == 0) return -(4.0 / 3.0) * (mu[i] * mu[i]) * (mu[j] * mu[j]) * (mu[k] * mu[k]) * rrr / product;
  if (type == 1) return 0.5625 * (q[i] * q[i]) * (q[j] * q[j]) * (q[k] * q[k]) * rrr / (product * product * product);
  // The mixed factor is the one without symmetry: it needs mu(k), Q(j) and a moment of i.
  if (mu[k] == 0 || q[j] == 0 || (mu[i] == 0 && q[i] == 0)) return 0;
  return q[i] * q[i] / sigma[i] * (1.0 / p.mseg[i]) * (1.0 / p.mseg[j]) * (1.0 / p.mseg[k]) * sigma[j] * sigma[k] *
         mu[k] * mu[k] * (mu[j] * mu[j] + 1.193735 * q[j] * q[j] / (sigma[j] * sigma[j])) / (product * product);
}

namespace {

/// Packs the constants of one type, each unordered combination once.
void pack(int type, const Parameters& p, Polar::Tables& tables) {
  const auto n = at(p.n);
  const auto place = [](std::size_t i) { return static_cast<int>(i); };
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = i; j < n; ++j) {
      const double factor =
          i == j ? Polar::gamma2(type, p, i, i) : Polar::gamma2(type, p, i, j) + Polar::gamma2(type, p, j, i);
      if (factor == 0) continue;
      Polar::Pair pair{{{place(i), place(j)}, 2}, Polar::pair_a(type, p, i, j), Polar::pair_b(type, p, i, j)};
      for (double& a : pair.a) a = factor * a;
      for (double& b : pair.b) b = factor * b * geometric_energy(p, i, j);
      tables.pairs[at(type)].push_back(pair);
    }
  }
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = i; j < n; ++j) {
      for (std::size_t k = j; k < n; ++k) {
        std::array<std::size_t, 3> order = {i, j, k};
        double factor = 0;
        do {  // the distinct permutations of (i, j, k)
          factor += Polar::gamma3(type, p, order[2], order[1], order[0]);
        } while (std::next_permutation(order.begin(), order.end()));
        if (factor == 0) continue;
        Polar::Triplet triplet{{{place(i), place(j), place(k)}, 3}, Polar::triplet_c(type, p, i, j, k)};
        for (double& c : triplet.c) c = factor * c;
        tables.triplets[at(type)].push_back(triplet);
      }
    }
  }
}

bool among_first(const Monomial& m, int n) {
  return std::all_of(m.index.begin(), m.index.begin() + m.size, [n](int c) { return c < n; });
}

/// The common factors of a type in a mixture of the first `n` components.
Monomial common_factors(const Polar::Tables& tables, std::size_t type, int n) {
  Monomial common;
  const auto& pairs = tables.pairs[type];
  if (std::none_of(pairs.begin(), pairs.end(), [n](const auto& pair) { return among_first(pair.components, n); }))
    return common;
  for (int c = 0; c < n; ++c) {
    int times = 2;
    for (const auto& pair : pairs)
      if (among_first(pair.components, n)) times = std::min(times, pair.components.times(c));
    for (const auto& triplet : tables.triplets[type])
      if (among_first(triplet.components, n)) times = std::min(times, triplet.components.times(c));
    for (; times > 0; --times) common.index[common.size++] = c;
  }
  return common;
}

}  // namespace

void Polar::Tables::update(const Parameters& p) {
  for (auto& of_type : pairs) of_type.clear();
  for (auto& of_type : triplets) of_type.clear();
  first_type = 0, last_type = -1;
  first_polar = nmax;
  if (!p.is_polar) return;
  if (p.is_quadip)
    last_type = 2;
  else
    first_type = last_type = p.is_dipole ? 0 : 1;
  for (int i = p.n; i-- > 0;)
    if (p.dipole[at(i)] != 0 || p.quapole[at(i)] != 0) first_polar = i;
  for (int type = first_type; type <= last_type; ++type) pack(type, p, *this);
  for (std::size_t type = 0; type < common.size(); ++type)
    for (int n = 1; n <= p.n; ++n) common[type][at(n)] = common_factors(*this, type, n);
}

}  // namespace tessarel::eos
