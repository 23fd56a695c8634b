// A check box used by a script: needs the libraries registered (regsvr32 Morvane.dll, regsvr32 Ambrel.dll), run with
//     cscript check_box.js
var UNCHECKED = 0, CHECKED = 1, HALF_CHECKED = 2;
var names = ["unchecked", "checked", "half-checked"];

var box = new ActiveXObject("Morvane.VexCheckBox");
WScript.Echo("a new box is " + names[box.GetValue()]);

box.SetValue(CHECKED);
WScript.Echo("after SetValue(CHECKED) it is " + names[box.GetValue()]);

// Data that belongs to the application travels with the box.
box.SetData(42);
WScript.Echo("its data is " + box.GetData());

var right = box.GetValue() === CHECKED && box.GetData() == 42 && box.IsActive();
WScript.Echo("check_box: " + (right ? "passed" : "failed"));
WScript.Quit(right ? 0 : 1);
