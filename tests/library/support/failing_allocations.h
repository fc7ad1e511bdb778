// Allocations of the program and of the libraries in it that fail on request. Host build only: there a shared library
// uses the program's operator new.
#pragma once

// The `count`th allocation that the exports make from now on fails, and no other or, when lasting, all later ones, too;
// 0: none does. What the provider and the program allocate does not count.
void FailAllocation(unsigned count, bool lasting);

// Whether one has failed since then.
bool HasAllocationFailed();
