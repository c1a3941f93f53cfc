// Exports of building blocks: prepared and assembled apart. Made by tools/make_blocks.py from its table.
#include "interface/prepared.hpp"

using namespace tessarel;
using namespace tessarel::interface;

extern "C" {

tessarel_blocks* tessarel_blocks_new(void) {
  tessarel_blocks* blocks = nullptr;
  run(false, [&blocks] { blocks = new tessarel_blocks; });
  return blocks;
}
void tessarel_blocks_free(tessarel_blocks* blocks) {
  delete blocks;
}

void tessarel_calc_a_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                          tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_scalar<Value::a, double, By::nothing>);
}
void tessarel_calc_a_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                          double* a) {
  assemble(n, x, rho, blocks, Value::a, 0, 0, a);
}
void tessarel_calc_da_dt_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                              tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_scalar<Value::a, T1, By::t>);
}
void tessarel_calc_da_dt_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                              double* da_dt) {
  assemble(n, x, rho, blocks, Value::a, 1, 0, da_dt);
}
void tessarel_calc_d2a_dt2_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_scalar<Value::a, T2, By::t>);
}
void tessarel_calc_d2a_dt2_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                                double* d2a_dt2) {
  assemble(n, x, rho, blocks, Value::a, 2, 0, d2a_dt2);
}
void tessarel_calc_d3a_dt3_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_scalar<Value::a, T3, By::t>);
}
void tessarel_calc_d3a_dt3_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                                double* d3a_dt3) {
  assemble(n, x, rho, blocks, Value::a, 3, 0, d3a_dt3);
}
void tessarel_calc_da_dx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                              tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_composition<Value::a, double, By::nothing, 1>);
}
void tessarel_calc_da_dx_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                              double* da_dx) {
  assemble_array(n, x, rho, blocks, Value::a, 0, 1, da_dx);
}
void tessarel_calc_d2a_dxdx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                 tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_composition<Value::a, double, By::nothing, 2>);
}
void tessarel_calc_d2a_dxdx_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                                 double* d2a_dxdx) {
  assemble_array(n, x, rho, blocks, Value::a, 0, 2, d2a_dxdx);
}
void tessarel_calc_d3a_dxdxdx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                   tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_composition<Value::a, double, By::nothing, 3>);
}
void tessarel_calc_d3a_dxdxdx_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                                   double* d3a_dxdxdx) {
  assemble_array(n, x, rho, blocks, Value::a, 0, 3, d3a_dxdxdx);
}
void tessarel_calc_d2a_dtdx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                 tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_composition<Value::a, T1, By::t, 1>);
}
void tessarel_calc_d2a_dtdx_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                                 double* d2a_dtdx) {
  assemble_array(n, x, rho, blocks, Value::a, 1, 1, d2a_dtdx);
}
void tessarel_calc_z_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t, const double* rho,
                          tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, ipure, t, rho, blocks, status, prepare_scalar<Value::z, double, By::nothing>);
}
void tessarel_calc_z_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                          double* z) {
  assemble(n, x, rho, blocks, Value::z, 0, 0, z);
}
void tessarel_calc_dz_drho_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                const double* rho, tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, ipure, t, rho, blocks, status, prepare_scalar<Value::z, T1, By::rho>);
}
void tessarel_calc_dz_drho_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                                double* dz_drho) {
  assemble(n, x, rho, blocks, Value::z, 0, 1, dz_drho);
}
void tessarel_calc_d2z_drho2_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                  const double* rho, tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, ipure, t, rho, blocks, status, prepare_scalar<Value::z, T2, By::rho>);
}
void tessarel_calc_d2z_drho2_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                                  double* d2z_drho2) {
  assemble(n, x, rho, blocks, Value::z, 0, 2, d2z_drho2);
}
void tessarel_calc_d3z_drho3_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t,
                                  const double* rho, tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, ipure, t, rho, blocks, status, prepare_scalar<Value::z, T3, By::rho>);
}
void tessarel_calc_d3z_drho3_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                                  double* d3z_drho3) {
  assemble(n, x, rho, blocks, Value::z, 0, 3, d3z_drho3);
}
void tessarel_calc_dz_dt_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                              tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_scalar<Value::z, T1, By::t>);
}
void tessarel_calc_dz_dt_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                              double* dz_dt) {
  assemble(n, x, rho, blocks, Value::z, 1, 0, dz_dt);
}
void tessarel_calc_d2z_dt2_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_scalar<Value::z, T2, By::t>);
}
void tessarel_calc_d2z_dt2_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                                double* d2z_dt2) {
  assemble(n, x, rho, blocks, Value::z, 2, 0, d2z_dt2);
}
void tessarel_calc_d2z_dtdrho_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                   tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_scalar<Value::z, TaylorTRho, By::t_rho>);
}
void tessarel_calc_d2z_dtdrho_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                                   double* d2z_dtdrho) {
  assemble(n, x, rho, blocks, Value::z, 1, 1, d2z_dtdrho);
}
void tessarel_calc_dz_dx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                              tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_composition<Value::z, T1, By::rho, 1>);
}
void tessarel_calc_dz_dx_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                              double* dz_dx) {
  assemble_array(n, x, rho, blocks, Value::z, 0, 1, dz_dx);
}
void tessarel_calc_d2z_dxdx_prep(const int32_t* n, const double* x, const double* t, const double* rho,
                                 tessarel_blocks* blocks, int32_t* status) {
  prepare(n, x, &mixture, t, rho, blocks, status, prepare_composition<Value::z, T1, By::rho, 2>);
}
void tessarel_calc_d2z_dxdx_base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks,
                                 double* d2z_dxdx) {
  assemble_array(n, x, rho, blocks, Value::z, 0, 2, d2z_dxdx);
}

}  // extern "C"
