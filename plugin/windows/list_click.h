#pragma once

// Handles a click in the list of the list-box dialog. The first one on its cells enables button 1,
// if that waits for it. If double clicks choose, a second click in succession on the same row
// records that row and ends the dialog.
void ClickList();
