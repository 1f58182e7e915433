#pragma once
// The charts of the window on paper and in files.
