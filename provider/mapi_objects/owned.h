// One reference to an object, given back unless it is handed out.
#pragma once

#include <unknwn.h>

#include <memory>

struct Releaser {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Interface>
using Owned = std::unique_ptr<Interface, Releaser>;
