#include "Xmp.h"

#include <string_view>

#include "Scenes.h"

namespace samples {
namespace {

// The frame of a packet around the attributes and the children of its one description.
std::string Packet(std::string_view attributes, std::string_view children = "") {
  std::string packet = "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n";
  packet += "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n";
  packet += " <rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n";
  packet += "  <rdf:Description rdf:about=\"\"";
  packet += attributes;
  packet += ">\n";
  packet += children;
  packet += "  </rdf:Description>\n </rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"r\"?>";
  return packet;
}

std::string Attribute(std::string_view name, std::string_view value) {
  std::string attribute = "\n    ";
  attribute += name;
  attribute += "=\"";
  attribute += value;
  attribute += '"';
  return attribute;
}

std::string Pose(int width) {
  const std::string columns = std::to_string(width);
  const std::string rows = std::to_string(width / 2);
  return Attribute("xmlns:GPano", "http://ns.google.com/photos/1.0/panorama/") +
         Attribute("GPano:ProjectionType", "equirectangular") +
         Attribute("GPano:UsePanoramaViewer", "True") +
         Attribute("GPano:PoseHeadingDegrees", "123.5") +
         Attribute("GPano:PosePitchDegrees", "-4.25") + Attribute("GPano:PoseRollDegrees", "0.75") +
         Attribute("GPano:FullPanoWidthPixels", columns) +
         Attribute("GPano:FullPanoHeightPixels", rows) +
         Attribute("GPano:CroppedAreaImageWidthPixels", columns) +
         Attribute("GPano:CroppedAreaImageHeightPixels", rows) +
         Attribute("GPano:CroppedAreaLeftPixels", "0") +
         Attribute("GPano:CroppedAreaTopPixels", "0");
}

std::string Thousandths(int value) {
  std::string digits = std::to_string(value);
  digits.insert(0, 3 - digits.size(), '0');
  return "0." + digits;
}

std::string Region(std::string_view name, const HeadBox& box) {
  const std::string rectangle = Thousandths(box.left) + ", " + Thousandths(box.top) + ", " +
                                Thousandths(box.width) + ", " + Thousandths(box.height);
  return "      <rdf:li" + Attribute("MPReg:PersonDisplayName", name) +
         Attribute("MPReg:Rectangle", rectangle) + Attribute("MPReg:PersonTagType", "Face") +
         "/>\n";
}

}  // namespace

std::string PanoramaPacket(int width) {
  return Packet(Pose(width));
}

std::string RatedPanoramaPacket(int width) {
  return Packet(Attribute("xmlns:xmp", "http://ns.adobe.com/xap/1.0/") +
                Attribute("xmp:Rating", "5") + Pose(width));
}

std::string PeoplePacket() {
  std::string children = "   <MP:RegionInfo rdf:parseType=\"Resource\">\n    <MPRI:Regions>\n";
  children += "     <rdf:Bag>\n";
  children += Region("Person on the left", kLeftHead);
  children += Region("Right &amp; smiling", kRightHead);
  children += "     </rdf:Bag>\n    </MPRI:Regions>\n   </MP:RegionInfo>\n";
  return Packet(Attribute("xmlns:MP", "http://ns.microsoft.com/photo/1.2/") +
                    Attribute("xmlns:MPRI", "http://ns.microsoft.com/photo/1.2/t/RegionInfo#") +
                    Attribute("xmlns:MPReg", "http://ns.microsoft.com/photo/1.2/t/Region#"),
                children);
}

std::string ExposurePacket() {
  return Packet(Attribute("xmlns:exif", "http://ns.adobe.com/exif/1.0/") +
                    Attribute("xmlns:aux", "http://ns.adobe.com/exif/1.0/aux/") +
                    Attribute("exif:ShutterSpeedValue", "6/1") +
                    Attribute("exif:ApertureValue", "4/1") +
                    Attribute("exif:ExposureBiasValue", "-1/3") +
                    Attribute("exif:FocalLength", "50/1") + Attribute("aux:Lens", "24-70 mm f/2.8"),
                "   <exif:ISOSpeedRatings>\n    <rdf:Seq>\n     <rdf:li>400</rdf:li>\n"
                "    </rdf:Seq>\n   </exif:ISOSpeedRatings>\n");
}

}  // namespace samples
