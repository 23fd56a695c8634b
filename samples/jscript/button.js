// A command button used by a script: needs the libraries registered (regsvr32 Morvane.dll, regsvr32 Ambrel.dll), run with
//     cscript button.js
var PRESSED = 1;

var button = new ActiveXObject("Morvane.CmdButton");
button.CreateProps(); // a window does this for the controls in it
button.SetText("&Bold");
button.SetButtonState(PRESSED); // stays down until it is set to 0
WScript.Echo(button.GetText() + ": state " + button.GetButtonState() + ", at most " + button.GetMaxWidth() + " pixels of text");

var isRight = button.GetText() === "&Bold" && button.GetButtonState() === PRESSED && button.GetMaxWidth() === 100;
WScript.Echo("button: " + (isRight ? "passed" : "failed"));
