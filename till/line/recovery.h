// Getting back in step with a printer, without port or clock: what was seen and the time go in,
// what to do next comes out.
//
//   Ask --in step--> Stop        Ask is a request that changes nothing on the printer.
//    | no answer, or that to another command
//    v
//   Listen --the line has been silent for a while--> Reopen --open--> Ask
//    ^                                                  | the device is not there
//    +--------------------------------------------------+
//
// A late answer stays on the line and would be taken for the answer to the next command, which leaves every
// later command one answer behind. So the line is listened to until it falls silent (late answers gather
// there), then the port is closed and opened at once, which throws away what has gathered. The pauses grow,
// because a printer that takes long for one answer takes long for the next.
#pragma once

#include <chrono>

namespace zentaro::till {

/// What came of a request.
enum class Heard {
  InStep,        // the answer to it
  Nothing,       // no complete answer
  OutOfStep,     // something that is no answer to it
  Echo,          // the request itself: the line returns what is sent, and there is no printer on it
  OtherMachine,  // an answer, but from another printer than before the port was reopened
  Stopped        // whoever waits does not want to any longer
};

class Recovery {
 public:
  using Time = std::chrono::milliseconds;
  enum class Act { Ask, Listen, Reopen, Stop };

  /// Begins at `now` with Ask, or with Listen when an answer was lost already, and gives up when an attempt
  /// ends more than `limit` later.
  Recovery(Act first, Time limit, Time now) : act_(first), limit_(limit), start_(now) {}

  Act next() const { return act_; }
  /// How long the line has to be silent before Listen is done.
  Time silence() const { return silence_; }
  /// What came of the last request.
  Heard heard() const { return heard_; }
  Time waited(Time now) const { return now - start_; }

  void asked(Heard heard, Time now);
  /// The line was silent, or it never was and the limit is over.
  void listened();
  void reopened(bool isOpen, Time now);

 private:
  void pauseOrGiveUp(Time now);

  Act act_;
  Time limit_, start_;
  Time silence_{300};
  bool hasListened_ = false;
  Heard heard_ = Heard::Nothing;
};

}  // namespace zentaro::till
