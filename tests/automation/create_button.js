// An automation client: finds the command button by its ProgID and talks to it through IDispatch.
var failures = 0;

function check(what, expected, actual) {
    if (expected !== actual) {
        ++failures;
        WScript.Echo("FAILED " + what + ": expected " + expected + ", got " + actual);
    }
}

function canCreate(progId) {
    try {
        new ActiveXObject(progId);
        return true;
    } catch (error) {
        return false;
    }
}

var button = new ActiveXObject("Morvane.CmdButton");
check("a new button is active", true, button.IsActive());
button.SetActive(false);
check("active after SetActive(false)", false, button.IsActive());

var sameButton = new ActiveXObject("Morvane.CmdButton.1");
check("the second button has a state of its own", true, sameButton.IsActive());

// Its ProgID leads to the identifier in its registration script, which no class object answers to.
check("the list control by its ProgID", false, canCreate("Morvane.VexListCtrl"));

WScript.Echo(failures === 0 ? "create_button: passed" : "create_button: " + failures + " failed");
WScript.Quit(failures === 0 ? 0 : 1);
