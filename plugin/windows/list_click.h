#pragma once

// A click in the list of the list-box dialog. The first one in the band of its cells enables a
// button 1 that waits for it; a second one in succession on the same row chooses that row, where
// double clicks do.
void ClickList();
