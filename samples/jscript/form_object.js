// A form object used by a script: needs the libraries registered (regsvr32 Morvane.dll, regsvr32 Ambrel.dll), run with
//     cscript form_object.js
var form = new ActiveXObject("Morvane.UIFormObj");
form.CreateProps(); // a window does this for the forms in it
form.SetDrawColor(true); // the fill instead of the image
form.SetShowBitmap(true); // a bitmap, once there is one, goes before both
WScript.Echo("fill: " + form.GetDrawColor() + ", bitmap: " + form.IsShowBitmap());

var isRight = form.GetDrawColor() === true && form.IsShowBitmap() === true;
WScript.Echo("form_object: " + (isRight ? "passed" : "failed"));
