#pragma once

// Composing a dialog's result text in myreturntext. Both answer false where there is no memory for
// it; myreturntext is empty then.

// FieldLC and the values of the four fields, each after a "|"; FieldLC alone after Escape.
bool ComposeDialogResult();

// FieldLC, "|" and Field1, which holds the chosen lines; FieldLC alone after Escape.
bool ComposeListResult();
