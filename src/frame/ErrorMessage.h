#pragma once

// The message for a run-time error the program has no words of its own for: string 451
// ("An unknown error occured: ") followed by the error's number, with the exclamation icon
// and an OK button, through the installed Prompts. The command that met the error then ends
// and the program goes on.
namespace Frame {

void ShowErrorMessage(int errorNumber);

} // namespace Frame
