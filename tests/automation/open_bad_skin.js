// An automation client: opens a skin through the resource object, then one with a mistake. The error says where the
// mistake is, and the skin that runs stays as it was.
var failures = 0;

function check(what, expected, actual) {
    if (expected !== actual) {
        ++failures;
        WScript.Echo("FAILED " + what + ": expected " + expected + ", got " + actual);
    }
}

var NORMAL = 0; // VEX_BTN_NORMAL
var NUMBER_OUT_OF_RANGE = 304;

var files = new ActiveXObject("Scripting.FileSystemObject");
var folder = files.BuildPath(files.GetSpecialFolder(2), files.GetTempName());

function write(name, lines) {
    var file = files.CreateTextFile(files.BuildPath(folder, name), true);
    file.Write(lines.join("\n"));
    file.Close();
}

function writeSkin(color, vAlign) {
    write("shareres.xml", [
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>",
        "<Ambrel>",
        "  <share>",
        "    <TextStyles>",
        "      <Label Caption=\"Label\" clrText=\"" + color + "\" VAlign=\"" + vAlign + "\"/>",
        "    </TextStyles>",
        "  </share>",
        "</Ambrel>"]);
}

/// The error that opening the folder throws; null when it opens.
function errorOfOpening() {
    try {
        check("OpenSkin", true, resources.OpenSkin(folder, "", true));
        return null;
    } catch (error) {
        return error;
    }
}

function textColor() {
    return button.GetBackTextStyle(NORMAL).clrText;
}

var resources = new ActiveXObject("Ambrel.Resources");
files.CreateFolder(folder);
write("objects.xml", [
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>",
    "<Ambrel>",
    "  <SkinInfo Version=\"1.0\"/>",
    "  <Objects>",
    "    <Save AddinGuid=\"Morvane17\" Name=\"Save\" Type=\"90000\" NormalTextStyle.TextStyleId=\"Label\"/>",
    "  </Objects>",
    "</Ambrel>"]);
writeSkin("0x000000FF", "1");
var problem = errorOfOpening();
check("a good skin opens", null, problem && problem.description);
var button = resources.AddPluginResObject(resources.CreateAmbrel("Form", 0), "Save", "Morvane17");
check("its colour", 0xFF, textColor());

writeSkin("0x00FF0000", "9");
problem = errorOfOpening();
check("a bad skin is refused", true, problem !== null);
if (problem) {
    check("where and what is wrong", 0,
        problem.description.indexOf("shareres.xml:5:51: <Label> attribute VAlign: the number must lie from 0 to 2"));
    check("the number of the error", 0x200 + NUMBER_OUT_OF_RANGE, problem.number & 0xFFFF);
    check("in the text, too", true, problem.description.indexOf("(error " + NUMBER_OUT_OF_RANGE + ")") > 0);
}
check("the skin that runs", folder, resources.GetSkinFilePath());
check("and its colour", 0xFF, textColor());

writeSkin("0x00FF0000", "2");
problem = errorOfOpening();
check("mended, it opens", null, problem && problem.description);
check("and shows its colour", 0xFF0000, textColor());
resources.CloseSkin();
files.DeleteFolder(folder);

WScript.Echo(failures === 0 ? "open_bad_skin: passed" : "open_bad_skin: " + failures + " failed");
WScript.Quit(failures === 0 ? 0 : 1);
