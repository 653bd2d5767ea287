#pragma once

#include <functional>

/// Called now and then during long work with the part that is done, from 0 to 1. What it throws ends the work.
using Progress = std::function<void(double)>;
