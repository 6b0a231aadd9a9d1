// Results of the operations on preset files, where a count or 0 means success.
#pragma once

#include <new>

#include "ByteStream.h"

inline constexpr int kNotAPresetFile = -1;
inline constexpr int kNothingForPlugin = -2;
inline constexpr int kPresetIoFailure = -3;
inline constexpr int kPresetEnded = -4;

/// Thrown where the user ends an operation; it stays within this room, too.
struct PresetWorkEnded {};

/// The barrier for what streams and codec throw; a file that asks for more memory than there is ends here,
/// too.
template <typename TWork>
int ResultOf(TWork&& work) {
    try {
        return work();
    } catch (const StreamError&) {
        return kPresetIoFailure;
    } catch (const PresetWorkEnded&) {
        return kPresetEnded;
    } catch (const std::bad_alloc&) {
        return kPresetIoFailure;
    }
}
