// Packets as cameras, editors and libraries write them.

#include "xmp/XmpPacketCase.h"

namespace {

using namespace test;

const std::vector<PacketCase> kUsualPackets = {
    {"AttributesOfOneDescription",
     R"xml(<?xpacket begin="" id="W5M0MpCehiHzreSzNTczkc9d"?>
<x:xmpmeta xmlns:x="adobe:ns:meta/" x:xmptk="Core 7.0">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about=""
    xmlns:xmp="http://ns.adobe.com/xap/1.0/"
    xmlns:dc="http://purl.org/dc/elements/1.1/"
   xmp:Rating="4"
   xmp:CreatorTool="Darkroom 2.1 (Windows)"
   dc:format="image/jpeg"/>
 </rdf:RDF>
</x:xmpmeta>
<?xpacket end="w"?>)xml",
     {{kRoot, "about", kRdf, ""},
      {kRoot, "Rating", kXmp, "4"},
      {kRoot, "CreatorTool", kXmp, "Darkroom 2.1 (Windows)"},
      {kRoot, "format", kDc, "image/jpeg"}}},

    {"ElementsOfOneDescription",
     R"xml(<?xpacket begin="" id="W5M0MpCehiHzreSzNTczkc9d"?>
<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about="" xmlns:xmp="http://ns.adobe.com/xap/1.0/" xmlns:tiff="http://ns.adobe.com/tiff/1.0/">
   <xmp:CreateDate>2019-05-04T10:11:12+02:00</xmp:CreateDate>
   <xmp:Rating>3</xmp:Rating>
   <tiff:Make>Camera Works</tiff:Make>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>
<?xpacket end="w"?>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription, "CreateDate", kXmp, "2019-05-04T10:11:12+02:00"},
      {kDescription, "Rating", kXmp, "3"},
      {kDescription, "Make", kTiff, "Camera Works"}}},

    {"OneDescriptionForEachSchemaInSingleQuotes",
     R"xml(<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>
<x:xmpmeta xmlns:x='adobe:ns:meta/' x:xmptk='Text writer 12'>
<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>

 <rdf:Description rdf:about=''
  xmlns:aux='http://ns.adobe.com/exif/1.0/aux/'>
  <aux:Lens>24.0-70.0 mm f/2.8</aux:Lens>
 </rdf:Description>

 <rdf:Description rdf:about=''
  xmlns:exif='http://ns.adobe.com/exif/1.0/'>
  <exif:ISOSpeedRatings>
   <rdf:Seq>
    <rdf:li>100</rdf:li>
    <rdf:li>200</rdf:li>
   </rdf:Seq>
  </exif:ISOSpeedRatings>
 </rdf:Description>
</rdf:RDF>
</x:xmpmeta>
<?xpacket end='w'?>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription, "Lens", kAux, "24.0-70.0 mm f/2.8"},
      {kRoot, "about", kRdf, ""},
      {kDescription + "ISOSpeedRatings/Seq/", "li", kRdf, "100"},
      {kDescription + "ISOSpeedRatings/Seq/", "li", kRdf, "200"}}},

    {"AltWithSeveralLanguages",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about=""
    xmlns:dc="http://purl.org/dc/elements/1.1/">
   <dc:rights>
    <rdf:Alt>
     <rdf:li xml:lang="x-default">All rights reserved</rdf:li>
     <rdf:li xml:lang="de-DE">Alle Rechte vorbehalten</rdf:li>
     <rdf:li xml:lang="fr-FR">Tous droits réservés</rdf:li>
    </rdf:Alt>
   </dc:rights>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription + "rights/Alt/", "lang", "xml", "x-default"},
      {kDescription + "rights/Alt/", "li", kRdf, "All rights reserved"},
      {kDescription + "rights/Alt/", "lang", "xml", "de-DE"},
      {kDescription + "rights/Alt/", "li", kRdf, "Alle Rechte vorbehalten"},
      {kDescription + "rights/Alt/", "lang", "xml", "fr-FR"},
      {kDescription + "rights/Alt/", "li", kRdf, "Tous droits r\xC3\xA9serv\xC3\xA9s"}}},

    {"StructWithInnerDescription",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about=""
    xmlns:xmpMM="http://ns.adobe.com/xap/1.0/mm/"
    xmlns:stRef="http://ns.adobe.com/xap/1.0/sType/ResourceRef#">
   <xmpMM:DerivedFrom>
    <rdf:Description
      stRef:instanceID="xmp.iid:7a31"
      stRef:documentID="xmp.did:7a30"/>
   </xmpMM:DerivedFrom>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription + "DerivedFrom/", "instanceID", kReference, "xmp.iid:7a31"},
      {kDescription + "DerivedFrom/", "documentID", kReference, "xmp.did:7a30"}}},

    {"StructAsResource",
     R"xml(<x:xmpmeta xmlns:x='adobe:ns:meta/'>
<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>
 <rdf:Description rdf:about='' xmlns:exif='http://ns.adobe.com/exif/1.0/'>
  <exif:Flash rdf:parseType='Resource'>
   <exif:Fired>False</exif:Fired>
   <exif:Mode>2</exif:Mode>
  </exif:Flash>
  <exif:ExposureMode>0</exif:ExposureMode>
 </rdf:Description>
</rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription, "parseType", kRdf, "Resource"},
      {kDescription + "Flash/", "Fired", kExif, "False"},
      {kDescription + "Flash/", "Mode", kExif, "2"},
      {kDescription, "ExposureMode", kExif, "0"}}},

    {"StructAsAttributesOfAnEmptyElement",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/"> <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#"> <rdf:Description rdf:about="" xmlns:xmpMM="http://ns.adobe.com/xap/1.0/mm/" xmlns:stRef="http://ns.adobe.com/xap/1.0/sType/ResourceRef#" xmpMM:InstanceID="xmp.iid:C1"> <xmpMM:DerivedFrom stRef:instanceID="xmp.iid:C0" stRef:documentID="xmp.did:C0"/> </rdf:Description> </rdf:RDF> </x:xmpmeta>                    <?xpacket end="w"?>)xml",
     {{kRoot, "about", kRdf, ""},
      {kRoot, "InstanceID", kMedia, "xmp.iid:C1"},
      {kDescription, "instanceID", kReference, "xmp.iid:C0"},
      {kDescription, "documentID", kReference, "xmp.did:C0"}}},

    {"SequenceOfStructs",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about=""
    xmlns:xmpMM="http://ns.adobe.com/xap/1.0/mm/"
    xmlns:stEvt="http://ns.adobe.com/xap/1.0/sType/ResourceEvent#">
   <xmpMM:History>
    <rdf:Seq>
     <rdf:li
      stEvt:action="created"
      stEvt:when="2018-03-31T17:17:34"/>
     <rdf:li>
      <rdf:Description stEvt:action="derived">
       <stEvt:parameters>converted from raw</stEvt:parameters>
      </rdf:Description>
     </rdf:li>
    </rdf:Seq>
   </xmpMM:History>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription + "History/Seq/", "action", kEvent, "created"},
      {kDescription + "History/Seq/", "when", kEvent, "2018-03-31T17:17:34"},
      {kDescription + "History/Seq/li/", "action", kEvent, "derived"},
      {kDescription + "History/Seq/li/Description/", "parameters", kEvent, "converted from raw"}}},

    {"KeywordsOnOneLine",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/"><rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#"><rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/"><dc:subject><rdf:Bag><rdf:li>sea</rdf:li><rdf:li>low sun</rdf:li></rdf:Bag></dc:subject></rdf:Description></rdf:RDF></x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription + "subject/Bag/", "li", kRdf, "sea"},
      {kDescription + "subject/Bag/", "li", kRdf, "low sun"}}},

    {"PeopleRegionsAsElements",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about="" xmlns:MP="http://ns.microsoft.com/photo/1.2/">
   <MP:RegionInfo>
    <rdf:Description>
     <MPRI:Regions xmlns:MPRI="http://ns.microsoft.com/photo/1.2/t/RegionInfo#">
      <rdf:Bag>
       <rdf:li>
        <rdf:Description xmlns:MPReg="http://ns.microsoft.com/photo/1.2/t/Region#">
         <MPReg:PersonDisplayName>Ann</MPReg:PersonDisplayName>
         <MPReg:Rectangle>0.25, 0.125, 0.5, 0.5</MPReg:Rectangle>
        </rdf:Description>
       </rdf:li>
      </rdf:Bag>
     </MPRI:Regions>
    </rdf:Description>
   </MP:RegionInfo>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription + "RegionInfo/Description/Regions/Bag/li/"
                      "Description/",
       "PersonDisplayName", "http://ns.microsoft.com/photo/1.2/t/Region#", "Ann"},
      {kDescription + "RegionInfo/Description/Regions/Bag/li/"
                      "Description/",
       "Rectangle", "http://ns.microsoft.com/photo/1.2/t/Region#", "0.25, 0.125, 0.5, 0.5"}}},

    {"PeopleRegionsAsAttributes",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about=""
    xmlns:MP="http://ns.microsoft.com/photo/1.2/"
    xmlns:MPRI="http://ns.microsoft.com/photo/1.2/t/RegionInfo#"
    xmlns:MPReg="http://ns.microsoft.com/photo/1.2/t/Region#">
   <MP:RegionInfo rdf:parseType="Resource">
    <MPRI:Regions>
     <rdf:Bag>
      <rdf:li MPReg:PersonDisplayName="Bo" MPReg:Rectangle="0.1, 0.2, 0.3, 0.4" MPReg:PersonTagType="Face"/>
     </rdf:Bag>
    </MPRI:Regions>
   </MP:RegionInfo>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription, "parseType", kRdf, "Resource"},
      {kDescription + "RegionInfo/Regions/Bag/", "PersonDisplayName",
       "http://ns.microsoft.com/photo/1.2/t/Region#", "Bo"},
      {kDescription + "RegionInfo/Regions/Bag/", "Rectangle",
       "http://ns.microsoft.com/photo/1.2/t/Region#", "0.1, 0.2, 0.3, 0.4"},
      {kDescription + "RegionInfo/Regions/Bag/", "PersonTagType",
       "http://ns.microsoft.com/photo/1.2/t/Region#", "Face"}}},

    {"FaceRegionsWithAreas",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about=""
    xmlns:mwg-rs="http://www.metadataworkinggroup.com/schemas/regions/"
    xmlns:stDim="http://ns.adobe.com/xap/1.0/sType/Dimensions#"
    xmlns:stArea="http://ns.adobe.com/xmp/sType/Area#">
   <mwg-rs:Regions rdf:parseType="Resource">
    <mwg-rs:AppliedToDimensions stDim:w="4000" stDim:h="3000"/>
    <mwg-rs:RegionList>
     <rdf:Bag>
      <rdf:li>
       <rdf:Description mwg-rs:Name="Ann" mwg-rs:Type="Face">
        <mwg-rs:Area stArea:x="0.5" stArea:y="0.25" />
       </rdf:Description>
      </rdf:li>
     </rdf:Bag>
    </mwg-rs:RegionList>
   </mwg-rs:Regions>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription, "parseType", kRdf, "Resource"},
      {kDescription + "Regions/", "w", "http://ns.adobe.com/xap/1.0/sType/Dimensions#", "4000"},
      {kDescription + "Regions/", "h", "http://ns.adobe.com/xap/1.0/sType/Dimensions#", "3000"},
      {kDescription + "Regions/RegionList/Bag/li/", "Name",
       "http://www.metadataworkinggroup.com/schemas/regions/", "Ann"},
      {kDescription + "Regions/RegionList/Bag/li/", "Type",
       "http://www.metadataworkinggroup.com/schemas/regions/", "Face"},
      {kDescription + "Regions/RegionList/Bag/li/Description/", "x",
       "http://ns.adobe.com/xmp/sType/Area#", "0.5"},
      {kDescription + "Regions/RegionList/Bag/li/Description/", "y",
       "http://ns.adobe.com/xmp/sType/Area#", "0.25"}}},

    {"Panorama",
     R"xml(<?xpacket begin="" id="W5M0MpCehiHzreSzNTczkc9d"?>
<x:xmpmeta xmlns:x="adobe:ns:meta/" xmptk="Stitcher">
  <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
    <rdf:Description rdf:about="" xmlns:GPano="http://ns.google.com/photos/1.0/panorama/">
      <GPano:UsePanoramaViewer>True</GPano:UsePanoramaViewer>
      <GPano:ProjectionType>equirectangular</GPano:ProjectionType>
      <GPano:PoseHeadingDegrees>122.0</GPano:PoseHeadingDegrees>
    </rdf:Description>
  </rdf:RDF>
</x:xmpmeta>
<?xpacket end="r"?>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription, "UsePanoramaViewer", "http://ns.google.com/photos/1.0/panorama/", "True"},
      {kDescription, "ProjectionType", "http://ns.google.com/photos/1.0/panorama/",
       "equirectangular"},
      {kDescription, "PoseHeadingDegrees", "http://ns.google.com/photos/1.0/panorama/", "122.0"}}},

    {"EmptyElements",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about="" xmlns:xmp="http://ns.adobe.com/xap/1.0/" xmlns:xmpRights="http://ns.adobe.com/xap/1.0/rights/">
   <xmp:Label/>
   <xmp:Nickname></xmp:Nickname>
   <xmpRights:Marked />
   <xmpRights:WebStatement rdf:resource="http://example.com/rights"/>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription, "Nickname", kXmp, ""},
      {kDescription, "resource", kRdf, "http://example.com/rights"}}},

    {"EncodedAndForeignText",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/" dc:identifier="a &quot;b&quot;" dc:coverage="Zürich">
   <dc:source>Tom &amp; J&#xE9;r&#244;me &lt;here&gt;</dc:source>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kRoot, "identifier", kDc, "a &quot;b&quot;"},
      {kRoot, "coverage", kDc, "Z\xC3\xBCrich"},
      {kDescription, "source", kDc, "Tom &amp; J&#xE9;r&#244;me &lt;here&gt;"}}},

    {"TextOverSeveralLines",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/">
   <dc:source>
    first
    second
   </dc:source>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""}, {kDescription, "source", kDc, "\n    first\n    second\n   "}}},

    {"RightsInEveryForm",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about=""
    xmlns:xmpRights="http://ns.adobe.com/xap/1.0/rights/"
   xmpRights:Marked="True">
   <xmpRights:WebStatement>http://example.com</xmpRights:WebStatement>
   <xmpRights:UsageTerms>
    <rdf:Alt>
     <rdf:li xml:lang='x-default'>none</rdf:li>
    </rdf:Alt>
   </xmpRights:UsageTerms>
  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kRoot, "Marked", kRights, "True"},
      {kDescription, "WebStatement", kRights, "http://example.com"},
      {kDescription + "UsageTerms/Alt/", "lang", "xml", "x-default"},
      {kDescription + "UsageTerms/Alt/", "li", kRdf, "none"}}},
};

class XmpPacket : public testing::TestWithParam<PacketCase> {};

TEST_P(XmpPacket, GivesItsPropertiesAndNoLog) {
  const PacketResult result = ReadPacket(GetParam().packet);
  EXPECT_EQ(result.properties, GetParam().properties);
  EXPECT_EQ(result.log, GetParam().log);
}

INSTANTIATE_TEST_SUITE_P(Tools, XmpPacket, testing::ValuesIn(kUsualPackets), PacketCaseName);

}  // namespace
