// Objects that live as long as the program.
#pragma once

namespace zentaro {

/// The program's one T. It is never destroyed: the destructor of a global printer object may be the
/// last to need it.
template <class T>
T& lasting() {
  static T& object = *new T;
  return object;
}

}  // namespace zentaro
