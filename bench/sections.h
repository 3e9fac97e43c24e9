// The measurements, each of which prints its figures. `isShort`: a tenth of the repetitions, to see
// that all is well.
#pragma once

namespace bench {

void measureExchange(bool isShort);
void measureWaiting(bool isShort);
void measureFrames(bool isShort);
void measurePacedSale(bool isShort);
void measurePrograms(bool isShort);
void measureGrowth(bool isShort);
void measureBooks(bool isShort);

}  // namespace bench
