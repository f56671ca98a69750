<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="de">
<context>
    <name>LvMBTilesSource</name>
    <message>
        <source>nicht gefunden</source>
        <translation>not found</translation>
    </message>
    <message>
        <source>keine gewöhnliche Datei</source>
        <translation>not a regular file</translation>
    </message>
    <message>
        <source>lässt sich nicht öffnen: %1</source>
        <translation>cannot be opened: %1</translation>
    </message>
    <message>
        <source>keine MBTiles-Datei: %1</source>
        <translation>not an MBTiles file: %1</translation>
    </message>
    <message>
        <source>eine MBTiles-Datei ohne Kacheln</source>
        <translation>an MBTiles file without tiles</translation>
    </message>
    <message>
        <source>eine MBTiles-Datei mit Vektorkacheln; nur Bilder lassen sich zeichnen</source>
        <translation>an MBTiles file with vector tiles; only pictures can be drawn</translation>
    </message>
    <message>
        <source>eine MBTiles-Datei mit widersprüchlichen Zoomstufen</source>
        <translation>an MBTiles file with contradictory zoom levels</translation>
    </message>
</context>
<context>
    <name>LvMapPicture</name>
    <message>
        <source>unbekannte Art von Bild</source>
        <translation>unknown kind of picture</translation>
    </message>
    <message>
        <source>nicht genug Speicher für das Bild</source>
        <translation>not enough memory for the picture</translation>
    </message>
    <message>
        <source>lässt sich nicht schreiben: %1</source>
        <translation>cannot be written: %1</translation>
    </message>
</context>
<context>
    <name>LvProgressBar</name>
    <message>
        <source>%1 von %2</source>
        <translation>%1 of %2</translation>
    </message>
</context>
<context>
    <name>LvTileDirectorySource</name>
    <message>
        <source>kein Ordner einer Zoomstufe darin ({z}/{x}/{y}.png)</source>
        <translation>no folder of a zoom level in it ({z}/{x}/{y}.png)</translation>
    </message>
</context>
<context>
    <name>LvTileUrlTemplate</name>
    <message>
        <source>Die Adresse des Kartenservers fehlt.</source>
        <translation>The address of the map server is missing.</translation>
    </message>
    <message>
        <source>In der Adresse steht ein unbekannter Platzhalter. Bekannt sind {z}, {x}, {y} und {-y}.</source>
        <translation>The address contains an unknown placeholder. Known ones are {z}, {x}, {y} and {-y}.</translation>
    </message>
    <message>
        <source>Die Adresse eines Kartenservers muss mit https:// oder http:// beginnen.</source>
        <translation>The address of a map server must begin with https:// or http://.</translation>
    </message>
    <message>
        <source>„%1“ ist keine gültige Adresse.</source>
        <translation>“%1” is not a valid address.</translation>
    </message>
    <message>
        <source>In der Adresse müssen {z}, {x} und {y} (oder {-y}) stehen.</source>
        <translation>The address must contain {z}, {x} and {y} (or {-y}).</translation>
    </message>
    <message>
        <source>In der Adresse darf nur eines von {y} und {-y} stehen.</source>
        <translation>The address may contain only one of {y} and {-y}.</translation>
    </message>
    <message>
        <source>Die Platzhalter müssen hinter dem Namen des Servers stehen.</source>
        <translation>The placeholders must stand behind the name of the server.</translation>
    </message>
</context>
<context>
    <name>LvTrackLoader</name>
    <message>
        <source>nicht als XML lesbar: %1</source>
        <translation>not readable as XML: %1</translation>
    </message>
    <message>
        <source>größer als %1 MiB</source>
        <translation>larger than %1 MiB</translation>
    </message>
    <message>
        <source>nicht lesbar</source>
        <translation>not readable</translation>
    </message>
    <message>
        <source>leere Datei</source>
        <translation>empty file</translation>
    </message>
    <message>
        <source>Spuren ohne Punkte</source>
        <translation>tracks without points</translation>
    </message>
    <message>
        <source>Routen ohne Zwischenpunkte (Garmins Erweiterung der Routenpunkte)</source>
        <translation>routes without shaping points (Garmin route point extension)</translation>
    </message>
    <message>
        <source>nur Wegpunkte, weder Spur noch Route</source>
        <translation>only waypoints, no track or route</translation>
    </message>
    <message>
        <source>weder Spur noch Route darin</source>
        <translation>no track or route in it</translation>
    </message>
    <message>
        <source>kein lesbares Archiv</source>
        <translation>not a readable archive</translation>
    </message>
    <message>
        <source>Archiv ohne .kml-Datei</source>
        <translation>archive without a .kml file</translation>
    </message>
    <message>
        <source>die .kml-Datei im Archiv ist leer, beschädigt, verschlüsselt oder zu groß</source>
        <translation>the .kml file in the archive is empty, damaged, encrypted or too large</translation>
    </message>
    <message>
        <source>KML ohne das Element „Document“</source>
        <translation>KML without a Document element</translation>
    </message>
    <message>
        <source>keine Ortsmarke mit Koordinaten darin</source>
        <translation>no placemark with coordinates in it</translation>
    </message>
    <message>
        <source>keine Ortsmarke darin</source>
        <translation>no placemark in it</translation>
    </message>
    <message>
        <source>symbolische Verknüpfung ins Leere</source>
        <translation>broken symbolic link</translation>
    </message>
    <message>
        <source>nicht gefunden</source>
        <translation>not found</translation>
    </message>
    <message>
        <source>keine gewöhnliche Datei</source>
        <translation>not a regular file</translation>
    </message>
    <message>
        <source>dem Namen nach keine Spurdatei (%1)</source>
        <translation>not a track file by its name (%1)</translation>
    </message>
</context>
<context>
    <name>LvUrlTileSource</name>
    <message>
        <source>Der Kartenserver „%1“ liefert etwas anderes als Bilder.</source>
        <translation>The map server “%1” delivers something other than pictures.</translation>
    </message>
    <message>
        <source>Der Kartenserver „%1“ ist unbekannt, oder es besteht keine Verbindung zum Netz.</source>
        <translation>The map server “%1” is unknown, or there is no connection to the network.</translation>
    </message>
    <message>
        <source>Der Kartenserver „%1“ kann sich nicht ausweisen; die Verbindung wäre nicht sicher.</source>
        <translation>The map server “%1” cannot prove its identity; the connection would not be secure.</translation>
    </message>
    <message>
        <source>Der Kartenserver „%1“ antwortet nicht.</source>
        <translation>The map server “%1” does not answer.</translation>
    </message>
    <message>
        <source>Der Kartenserver „%1“ ist nicht erreichbar.</source>
        <translation>The map server “%1” cannot be reached.</translation>
    </message>
    <message>
        <source>Der Kartenserver „%1“ ist überlastet und bittet um Geduld (HTTP %2).</source>
        <translation>The map server “%1” is overloaded and asks for patience (HTTP %2).</translation>
    </message>
    <message>
        <source>Der Kartenserver „%1“ verweigert seine Kacheln (HTTP %2).</source>
        <translation>The map server “%1” refuses its tiles (HTTP %2).</translation>
    </message>
</context>
</TS>
