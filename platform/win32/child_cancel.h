// The environment variable through which `build` hands each child the event
// that asks it to stop (its handle's number, inherited by the child).
#pragma once

inline constexpr const char* ChildCancelVariable = "GLYPHWRIGHT_CANCEL_EVENT";
