#include "tests/story/model_on_mac.h"

#include "tests/support/begun.h"

namespace corvane::test {

ModelOnMac::ModelOnMac() { untilBegun(m_model); }

} // namespace corvane::test
