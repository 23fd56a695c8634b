// An automation client: a check box by its ProgID, with the properties that the runtime gives it.
var failures = 0;

function check(what, expected, actual) {
    if (expected !== actual) {
        ++failures;
        WScript.Echo("FAILED " + what + ": expected " + expected + ", got " + actual);
    }
}

var UNCHECKED = 0, CHECKED = 1, HALF_CHECKED = 2;

var box = new ActiveXObject("Morvane.VexCheckBox");
check("a new box", UNCHECKED, box.GetValue());
box.SetValue(CHECKED);
check("the value that was set", CHECKED, box.GetValue());

box.SetValue(HALF_CHECKED);
check("half checked without properties", CHECKED, box.GetValue());
box.CreateProps();
box.SetValue(HALF_CHECKED);
check("half checked with properties", HALF_CHECKED, box.GetValue());

check("its first text", "CheckBox", box.GetText());
box.SetText("Stay signed in");
check("the text that was set", "Stay signed in", box.GetText());
box.SetThreeState(true);
check("three states", true, box.GetThreeState());
check("its type name", "CheckBox", box.GetControlTypeName());

// Wide numbers: scripts have none, but numbers and digits of every size they can write arrive, and what they can hold
// comes back.
var numbers = [0, 7, -1, 2147483648, 9007199254740991, -9007199254740991];
for (var i = 0; i < numbers.length; ++i) {
    box.SetData(numbers[i]);
    check("data", numbers[i], box.GetData());
}
box.SetData("1099511627776");
check("data written in digits", 1099511627776, box.GetData());

WScript.Echo(failures === 0 ? "toggle_check_box: passed" : "toggle_check_box: " + failures + " failed");
WScript.Quit(failures === 0 ? 0 : 1);
