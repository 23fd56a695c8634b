// A radio box outside any window: needs the libraries registered (regsvr32 Morvane.dll, regsvr32 Ambrel.dll), run with
//     cscript radio_box.js
var UNCHECKED = 0, CHECKED = 1;

var box = new ActiveXObject("MorvaneRadio.RadioBox");
box.CreateProps(); // a window does this for the controls in it
box.SetText("Dark", false);
box.SetValue(CHECKED, false); // refused: it has no group before it has a parent
WScript.Echo(box.GetText() + " has the value " + box.GetValue());

var isRight = box.GetText() === "Dark" && box.GetValue() === UNCHECKED;
WScript.Echo("radio_box: " + (isRight ? "passed" : "failed"));
