// Sound libraries complain on standard error by themselves, in many lines and about what is in
// order for a show that may be silent. While they are kept quiet nothing else is heard either, so
// only around calls into them.
//
//   const int heard = muteStandardError();
//   ...
//   restoreStandardError(heard);
#pragma once

// Gives what restoreStandardError needs; -1 when standard error could not be muted.
int muteStandardError();

void restoreStandardError(int heard);
