#pragma once

/// Frees the run time's data of every thread. Nothing of the run time may be used afterwards.
void releaseThreadData();
