// The services in force, one set for each thread.
#include "platform/services.h"

#include "platform/per_thread.h"

namespace zentaro {
namespace {

struct InForce {
  Services services = systemServices();
};

}  // namespace

const Services& services() { return perThread<InForce>().services; }

ServicesScope::ServicesScope(const Services& others) : previous_(services()) {
  perThread<InForce>().services = others;
}

ServicesScope::~ServicesScope() { perThread<InForce>().services = previous_; }

}  // namespace zentaro
