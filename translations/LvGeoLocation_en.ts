<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="de">
<context>
    <name>LvFileHandler</name>
    <message>
        <source>Das ist keine gewöhnliche Datei.</source>
        <translation>This is no ordinary file.</translation>
    </message>
</context>
<context>
    <name>LvGPXBeelineCreator</name>
    <message>
        <source>Fluglinie</source>
        <translation>Flight line</translation>
    </message>
</context>
<context>
    <name>LvGPXTrackListModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
</context>
<context>
    <name>LvGPXTrackMultiFunctionDelegateWidget</name>
    <message>
        <source>%1 bearbeiten</source>
        <translation>Edit %1</translation>
    </message>
    <message>
        <source>%1 löschen</source>
        <translation>Delete %1</translation>
    </message>
    <message>
        <source>&lt;b&gt;Zoome auf&lt;/b&gt; %1</source>
        <translation>&lt;b&gt;Zoom to&lt;/b&gt; %1</translation>
    </message>
    <message>
        <source>Zoome auf %1</source>
        <translation>Zoom to %1</translation>
    </message>
    <message>
        <source>&lt;b&gt;Markiere&lt;/b&gt; %1</source>
        <translation>&lt;b&gt;Mark&lt;/b&gt; %1</translation>
    </message>
    <message>
        <source>Markiere %1</source>
        <translation>Mark %1</translation>
    </message>
</context>
<context>
    <name>LvGPXTrackShape</name>
    <message>
        <source>Punkt</source>
        <translation>Point</translation>
    </message>
    <message>
        <source>Pfeil</source>
        <translation>Arrow</translation>
    </message>
    <message>
        <source>Strecke</source>
        <translation>Line</translation>
    </message>
    <message>
        <source>Fläche</source>
        <translation>Area</translation>
    </message>
    <message>
        <source>Fluglinie</source>
        <translation>Flight line</translation>
    </message>
    <message>
        <source>Automatisch erkannt</source>
        <translation>Detected automatically</translation>
    </message>
    <message>
        <source>unbekannt</source>
        <translation>unknown</translation>
    </message>
    <message>
        <source>Ein Punkt kann als verschiedene vorgefertigte Formen gezeichnet werden.</source>
        <translation>A point can be drawn as one of several ready-made shapes.</translation>
    </message>
    <message>
        <source>Alle Punkte werden zu einer Strecke verbunden.</source>
        <translation>All points are joined to a line.</translation>
    </message>
    <message>
        <source>Alle Punkte werden als Außenlinie einer Fläche betrachtet.</source>
        <translation>All points are taken as the outline of an area.</translation>
    </message>
    <message>
        <source>Die beiden Punkt werden als Fluglinie betrachtet.</source>
        <translation>The two points are taken as a flight line.</translation>
    </message>
    <message>
        <source>Die Form wird automatisch erkannt.</source>
        <translation>The shape is detected automatically.</translation>
    </message>
    <message>
        <source>Wir wissen die Form nicht.</source>
        <translation>We do not know the shape.</translation>
    </message>
</context>
<context>
    <name>LvGeoArcEdit</name>
    <message>
        <source>Nord</source>
        <comment>COMBOBOX  Coordinate/Nautical bearing</comment>
        <translation>North</translation>
    </message>
    <message>
        <source>Süd</source>
        <comment>COMBOBOX  Coordinate/Nautical bearing</comment>
        <translation>South</translation>
    </message>
    <message>
        <source>Geografische Breite</source>
        <translation>Latitude</translation>
    </message>
    <message>
        <source>Breite: Himmelsrichtung</source>
        <translation>Latitude: hemisphere</translation>
    </message>
    <message>
        <source>Breite: Grad</source>
        <translation>Latitude: degrees</translation>
    </message>
    <message>
        <source>Breite: Minuten</source>
        <translation>Latitude: minutes</translation>
    </message>
    <message>
        <source>Breite: Sekunden</source>
        <translation>Latitude: seconds</translation>
    </message>
    <message>
        <source>Ost</source>
        <comment>COMBOBOX  Coordinate/Nautical bearing</comment>
        <translation>East</translation>
    </message>
    <message>
        <source>West</source>
        <comment>COMBOBOX  Coordinate/Nautical bearing</comment>
        <translation>West</translation>
    </message>
    <message>
        <source>Geografische Länge</source>
        <translation>Longitude</translation>
    </message>
    <message>
        <source>Länge: Himmelsrichtung</source>
        <translation>Longitude: hemisphere</translation>
    </message>
    <message>
        <source>Länge: Grad</source>
        <translation>Longitude: degrees</translation>
    </message>
    <message>
        <source>Länge: Minuten</source>
        <translation>Longitude: minutes</translation>
    </message>
    <message>
        <source>Länge: Sekunden</source>
        <translation>Longitude: seconds</translation>
    </message>
</context>
<context>
    <name>LvLatitude</name>
    <message>
        <source>S</source>
        <comment>short for &apos;south&apos;</comment>
        <translation>S</translation>
    </message>
    <message>
        <source>N</source>
        <comment>short for &apos;north&apos;</comment>
        <translation>N</translation>
    </message>
</context>
<context>
    <name>LvLongitude</name>
    <message>
        <source>W</source>
        <comment>short for &apos;west&apos;</comment>
        <translation>W</translation>
    </message>
    <message>
        <source>E</source>
        <comment>short for &apos;east&apos;</comment>
        <translation>E</translation>
    </message>
</context>
<context>
    <name>LvPreferencesGeoLocation</name>
    <message>
        <source>Landkarten</source>
        <translation>Maps</translation>
    </message>
    <message>
        <source>Wenn man ein Suchergebnis anklickt, soll es direkt in die Liste der Orte eingefügt werden.</source>
        <comment>CHECKBOX</comment>
        <translation>A click on a search result adds it to the list of places at once.</translation>
    </message>
    <message>
        <source>Alternativ wird hierfür ein Knopf angeboten, der explizit benutzt werden muss.</source>
        <translation>Otherwise there is a button for this, which has to be used explicitly.</translation>
    </message>
</context>
<context>
    <name>LvRequestDiskAccess</name>
    <message>
        <source>Alle Dateien (*)</source>
        <translation>All files (*)</translation>
    </message>
    <message>
        <source>Unterstützte Dateien (%1)</source>
        <translation>Supported files (%1)</translation>
    </message>
</context>
<context>
    <name>LvXMLBuilder</name>
    <message>
        <source>Die Datei „%1“ konnte nicht geschrieben werden: %2</source>
        <translation>The file “%1” could not be written: %2</translation>
    </message>
    <message>
        <source>Das Dokument ist leer.</source>
        <translation>The document is empty.</translation>
    </message>
    <message>
        <source>Die Elemente sind zu tief geschachtelt.</source>
        <translation>The elements are nested too deeply.</translation>
    </message>
    <message>
        <source>Ein Text gehört zu keinem Element des Dokuments.</source>
        <translation>A text belongs to no element of the document.</translation>
    </message>
    <message>
        <source>Das ist keine gewöhnliche Datei.</source>
        <translation>This is no ordinary file.</translation>
    </message>
    <message>
        <source>Sie würde größer als %1 MiB.</source>
        <translation>It would become larger than %1 MiB.</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>%1° %2′ %3″ Süd</source>
        <comment>Coordinate / Nautical Bearing  Latitude  Breite</comment>
        <translation>%1° %2′ %3″ South</translation>
    </message>
    <message>
        <source>%1° %2′ %3″ Nord</source>
        <comment>Coordinate / Nautical Bearing  Latitude  Breite</comment>
        <translation>%1° %2′ %3″ North</translation>
    </message>
    <message>
        <source>%1° %2′ %3″ West</source>
        <comment>Coordinate / Nautilal Bearing   Longitude/Länge</comment>
        <translation>%1° %2′ %3″ West</translation>
    </message>
    <message>
        <source>%1° %2′ %3″ Ost</source>
        <comment>Coordinate / Nautilal Bearing   Longitude/Länge</comment>
        <translation>%1° %2′ %3″ East</translation>
    </message>
    <message>
        <source>Datei für Route öffnen</source>
        <translation>Open a file with a route</translation>
    </message>
</context>
</TS>
