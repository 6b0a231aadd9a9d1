#pragma once

/// From here on a crash of the program leaves a minidump, the stacks of its threads without the heap, in the
/// folder of the program's data, and one message that names the file; then the program ends. The texts are
/// taken in the language that is chosen by now.
void PrepareForCrash();
