#include "fluid/fluid_module.hpp"

namespace tessarel::fluid_module {

Record record;

}  // namespace tessarel::fluid_module
