// One for the process, as the library that gives it has one provider.
#include "profiles/resource_module.h"

namespace {

HMODULE moduleInUse = nullptr;

}  // namespace

HMODULE GetResourceModule() {
    return moduleInUse;
}

void SetResourceModule(HMODULE module) {
    moduleInUse = module;
}
