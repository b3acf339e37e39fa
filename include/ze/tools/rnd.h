// The random source of the program. Its seed is fixed, so that listener keys and all else repeat
// from one run to the next and a run can be replayed: nothing here is for secrets. It has no lock
// and belongs to one thread at a time.
#pragma once

#include <string>

class QString;

namespace ze::rnd {

/// Starts the sequence anew, from a fixed seed other than the one at program start.
void ini_seed();

/// The next 64 bits; the flag has no effect.
unsigned long long number(bool);

/// A number of the closed range, in whichever order its ends are given; the flag has no effect.
unsigned long long number_range(unsigned long long low, unsigned long long high, bool);

/// "A" to "Z", "a" to "z", "0" to "9".
char letter();
char letter_lowercase();
char digit();

/// "A" to "Z", "1" to "9" or ":"; "0" never comes.
char alnum();

/// A number from 0 to `limit`. The first call binds the limit for the life of the program, later
/// ones have no effect; a first limit below 0 counts as 0.
int next_int(int limit);

/// A number from `low` up to, not including, `high`. The first call binds both, as in `next_int`;
/// when they make no finite range the number is `low`, or 0 when that is not finite either.
double next_double(double low, double high);

/// `words` runs of `length` letters each, joined by a blank.
std::string next_string(unsigned length, bool upper_case, unsigned words);

/// One run of `length` letters.
QString next_QString(unsigned length, bool upper_case);

}  // namespace ze::rnd
