#pragma once

// Composing a dialog's result text in myreturntext. Both return false if memory for it runs out;
// myreturntext is empty then.

// FieldLC and the values of the four fields, each after a "|"; FieldLC alone after Escape.
bool ComposeDialogResult();

// FieldLC, "|" and Field1, which holds the chosen lines; FieldLC alone after Escape.
bool ComposeListResult();
