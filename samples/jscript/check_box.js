// A check box used by a script: needs the libraries registered (regsvr32 Morvane.dll, regsvr32 Ambrel.dll), run with
//     cscript check_box.js
var CHECKED = 1;
var names = ["unchecked", "checked", "half-checked"];

var box = new ActiveXObject("Morvane.VexCheckBox");
box.CreateProps(); // a window does this for the controls in it
WScript.Echo("a new box says \"" + box.GetText() + "\" and is " + names[box.GetValue()]);

box.SetText("Look for updates");
box.SetValue(CHECKED);
WScript.Echo("\"" + box.GetText() + "\" is " + names[box.GetValue()]);

var isRight = box.GetText() === "Look for updates" && box.GetValue() === CHECKED;
WScript.Echo("check_box: " + (isRight ? "passed" : "failed"));
