#include "ambrel/skin/test_packages.h"

#include "ambrel/skin/reader.h"
#include "ambrel/skin/writer.h"

#include <zlib.h>

#include <stdexcept>

namespace ambrel::skin::test {

namespace {

constexpr std::string_view kCompactObjects = R"(<?xml version="1.0" encoding="UTF-8"?>
<Ambrel>
  <VexInfo Version="1.0"/>
  <Objects>
    <Button1 AddinGuid="Morvane17" Name="Button1" Type="90000" Width="200" Height="200" ResId="" SaveBits="1"
             HaveCanvas="0" CanvasFlages="0" TabStop="1" Ambrel1_Button1TextShowText="0" Odd="kept"/>
  </Objects>
  <SkinCtrls/>
</Ambrel>
)";

constexpr std::string_view kCompactProperties = R"(<?xml version="1.0" encoding="UTF-8"?>
<Ambrel>
  <SknInfo/>
  <Property>
    <Button1 Visible="1" DisposeMouseMsg="1" Opacity="255" BlendWithParent="0" CustomCursor="" Cursor="32512" Script=""
             Width="200" Height="200" CanDragData="0" PsdThemeGuid="" RgnInfo.SkinRgnId="Rgn1"
             DragPosition="HA0,HST3,l114,r0,w206:VA0,VST3,t131,b0,h109" V1="ImageSection1" V2="TextStyle1" V3=""
             V5="Cursor1" V99="unknown"/>
  </Property>
  <SkinCtrls/>
</Ambrel>
)";

constexpr std::string_view kCompactKeys = R"(<?xml version="1.0" encoding="UTF-8"?>
<Ambrel Version="2.0">
  <Button>
    <Normal>
      <Image ImageSecId="V1"/>
      <TextStyle TextStyleId="V2"/>
      <Graphics ImageSecId="V3"/>
    </Normal>
    <NormalIsExpand V10="V10" Default="1"/>
    <Text>
      <Text V4="V4" Default="Push &quot;me&quot;"/>
      <ShowText V6="V6" Default="1"/>
    </Text>
    <TextIsExpand>1</TextIsExpand>
    <Cursor>
      <Cursor SkinCursorId="V5"/>
      <Deep>
        <Image ImageSecId="V7" Default="ImageSection1"/>
      </Deep>
      <CursorDeepIsExpand/>
    </Cursor>
  </Button>
</Ambrel>
)";

constexpr std::string_view kCompactResources = R"(<?xml version="1.0" encoding="UTF-8"?>
<Ambrel>
  <share>
    <PreDefColors>
      <Ink Caption="Ink" clrValue="Accent"/>
      <Accent Caption="Accent" clrValue="0x00D96325"/>
    </PreDefColors>
    <Images>
      <Pic1 Caption="back.PNG" IsThemeRes="0" Tag="kept"/>
    </Images>
    <FontExs>
      <FontEx1 Caption="TAHOMA,8,bold" height="-11" weight="700" fontname="Tahoma" clrShadow="0x00FF00FF"/>
    </FontExs>
    <GradientColor>
      <Gradient1 Caption="" clrStart="Ink" clrEnd="0x00FFFFFF" GradientIrotation="90"/>
    </GradientColor>
    <ImageSecs>
      <ImageSection1 Caption="CmdButton.Normal" left="0" right="10" top="0" bottom="6" TopHeight="2" BottHeight="2"
                     LeftWidth="3" RightWidth="3" clrTrans="0x00FF00FF" IsTrans="1" PicId="Pic1"/>
    </ImageSecs>
    <TextStyles>
      <TextStyle1 Caption="Plain" HAlign="1" clrText="Ink" PreFontGUID0="FontEx1"/>
    </TextStyles>
    <Sounds><Click>  a &lt;raw&gt; text</Click></Sounds>
    <SkinCursors>
      <Cursor1 Caption="" IsStand="0" StandCursor="32512" PicId="Pic1"/>
    </SkinCursors>
    <SkinRgns><Rgn1/></SkinRgns>
  </share>
</Ambrel>
)";

constexpr std::string_view kFullObjects = R"(<?xml version="1.0" encoding="UTF-8"?>
<Ambrel>
  <SkinInfo SkinName="Form" Author="Ä" DesignUrl="" Description="" Version="1.0"/>
  <Objects>
    <Guid00112233445566778899AABBCCDDEEFF AddinGuid="{17413601-408F-4A0A-A495-35FFB7C3D9DD}" Name="UIForm1"
        Type="90000" Visible="1" HAlign="0" HSpaceType="3" left="1" right="2" width="30" VAlign="2" VSpaceType="0"
        top="-4" bottom="5" height="60" VexObj="17" SkinResourcePtr="99" BackImage.ImageSecId="Guid00000000000000000000000000000002"
        TextText="two&#10;lines &amp; &quot;more&quot;" BackDrawColor="1">
      <Guid11112233445566778899AABBCCDDEEFF AddinGuid="{0A44CA5A-ACF6-49CC-ABDB-A9A9B685B7C2}" Name="Static1"
        Type="90000"/>
    </Guid00112233445566778899AABBCCDDEEFF>
  </Objects>
  <SkinCtrls/>
</Ambrel>
)";

constexpr std::string_view kFullResources = R"(<?xml version="1.0" encoding="UTF-8"?>
<Ambrel>
  <share>
    <Images>
      <Guid00000000000000000000000000000001 Caption="form.spp"/>
    </Images>
    <ImageSecs>
      <Guid00000000000000000000000000000002 right="4" bottom="4" PicId="Guid00000000000000000000000000000001"/>
    </ImageSecs>
  </share>
</Ambrel>
)";

void appendBig32(Bytes& out, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<std::uint8_t>(value >> shift));
}

void appendChunk(Bytes& out, std::string_view type, const Bytes& data)
{
    appendBig32(out, static_cast<std::uint32_t>(data.size()));
    const std::size_t start = out.size();
    out.insert(out.end(), type.begin(), type.end());
    out.insert(out.end(), data.begin(), data.end());
    appendBig32(out, static_cast<std::uint32_t>(crc32(0, out.data() + start, static_cast<uInt>(out.size() - start))));
}

} // namespace

Bytes bytesOf(std::string_view text)
{
    return Bytes(text.begin(), text.end());
}

Bytes png(std::uint32_t width, std::uint32_t height)
{
    Bytes header;
    appendBig32(header, width);
    appendBig32(header, height);
    header.insert(header.end(), {8, 0, 0, 0, 0}); // 8 bits of grey
    const Bytes pixels(std::size_t(height) * (width + 1));
    Bytes packed(compressBound(pixels.size()));
    uLongf size = packed.size();
    compress(packed.data(), &size, pixels.data(), pixels.size());
    packed.resize(size);

    Bytes out = bytesOf("\x89PNG\r\n\x1A\n");
    appendChunk(out, "IHDR", header);
    appendChunk(out, "IDAT", packed);
    appendChunk(out, "IEND", {});
    return out;
}

PackageFiles compactPackage()
{
    PackageFiles files;
    files.add("objects.xml", bytesOf(kCompactObjects));
    files.add("prop.xml", bytesOf(kCompactProperties));
    files.add("mapattrib.xml", bytesOf(kCompactKeys));
    files.add("shareres.xml", bytesOf(kCompactResources));
    files.add("back.png", png(10, 6));
    files.add("back@200.png", png(20, 12));
    files.add("back@150.png", png(15, 9));
    files.add("readme.txt", bytesOf("not looked at"));
    return files;
}

PackageFiles fullPackage()
{
    PackageFiles files;
    files.add("objects.xml", bytesOf(kFullObjects));
    files.add("shareres.xml", bytesOf(kFullResources));
    files.add("form.spp", png(4, 4));
    return files;
}

PackageFiles replaced(PackageFiles files, std::string_view file, std::string_view from, std::string_view to)
{
    const Bytes* bytes = files.find(file);
    std::string text(bytes->begin(), bytes->end());
    const std::size_t at = text.find(from);
    if (at == std::string::npos)
        throw std::logic_error("no such spot: " + std::string(from));
    text.replace(at, from.size(), to);
    files.remove(file);
    files.add(std::string(file), bytesOf(text));
    return files;
}

Skin writtenAndRead(const Skin& skin)
{
    const auto files = writeSkin(skin);
    if (!files)
        throw std::runtime_error(files.error().text());
    auto again = readSkin(files.value());
    if (!again)
        throw std::runtime_error(again.error().text());
    return std::move(again.value());
}

} // namespace ambrel::skin::test
