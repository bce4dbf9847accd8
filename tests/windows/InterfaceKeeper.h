#pragma once

namespace corvane::test {

// With a process's last object of an interface, Wine takes the interface back and waits for its
// running calls; when one of them ends in that moment, it waits for ever. From the first call on an
// object that is never called and never ends keeps the interfaces that the tests call.
void KeepInterfaces();

}  // namespace corvane::test
