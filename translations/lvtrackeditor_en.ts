<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="de">
<context>
    <name>LvBeelineDialog</name>
    <message>
        <source>Von</source>
        <translation>From</translation>
    </message>
    <message>
        <source>Nach</source>
        <translation>To</translation>
    </message>
    <message>
        <source>Fluglinie</source>
        <translation>Flight line</translation>
    </message>
    <message>
        <source>Name der Fluglinie</source>
        <translation>Name of the flight line</translation>
    </message>
    <message>
        <source>Hinzufügen</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>Eine Fluglinie braucht zwei Orte.</source>
        <translation>A flight line needs two places.</translation>
    </message>
    <message>
        <source>Beide Orte sind derselbe.</source>
        <translation>Both places are the same.</translation>
    </message>
    <message numerus="yes">
        <source>Entfernung: %1, dazwischen %n Punkte.</source>
        <translation>
            <numerusform>Distance: %1, with %n point in between.</numerusform>
            <numerusform>Distance: %1, with %n points in between.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 – %2</source>
        <comment>start, end</comment>
        <translation>%1 – %2</translation>
    </message>
</context>
<context>
    <name>LvColorButton</name>
    <message>
        <source>Farbe wählen</source>
        <translation>Choose a Colour</translation>
    </message>
    <message>
        <source>%1, %2 % deckend</source>
        <comment>colour, share of opacity</comment>
        <translation>%1, %2 % opaque</translation>
    </message>
</context>
<context>
    <name>LvEditorFiles</name>
    <message>
        <source>Spuren und Dokumente (%1 %2)</source>
        <translation>Tracks and documents (%1 %2)</translation>
    </message>
    <message>
        <source>Spuren (%1)</source>
        <translation>Tracks (%1)</translation>
    </message>
    <message>
        <source>Alle Dateien (*)</source>
        <translation>All files (*)</translation>
    </message>
    <message>
        <source>Dateien öffnen</source>
        <translation>Open Files</translation>
    </message>
    <message>
        <source>Ungesicherte Änderungen</source>
        <translation>Unsaved Changes</translation>
    </message>
    <message>
        <source>Das Dokument ist geändert. Soll es gespeichert werden?</source>
        <translation>The document has been changed. Do you want to save it?</translation>
    </message>
    <message>
        <source>Dokument speichern</source>
        <translation>Save Document</translation>
    </message>
    <message>
        <source>Spuren als GPX exportieren</source>
        <translation>Export Tracks as GPX</translation>
    </message>
    <message>
        <source>GPX-Dateien (*.gpx)</source>
        <translation>GPX files (*.gpx)</translation>
    </message>
    <message>
        <source>Spuren als GeoJSON exportieren</source>
        <translation>Export Tracks as GeoJSON</translation>
    </message>
    <message>
        <source>GeoJSON-Dateien (*.geojson)</source>
        <translation>GeoJSON files (*.geojson)</translation>
    </message>
    <message>
        <source>Karte</source>
        <translation>Map</translation>
    </message>
    <message>
        <source>Das ging nicht</source>
        <translation>That Did Not Work</translation>
    </message>
    <message>
        <source>Das Dokument „%1“ wird geöffnet…</source>
        <translation>Opening the document “%1”…</translation>
    </message>
    <message>
        <source>Das Dokument „%1“ wird gespeichert…</source>
        <translation>Saving the document “%1”…</translation>
    </message>
    <message>
        <source>Die Spuren werden exportiert…</source>
        <translation>Exporting the tracks…</translation>
    </message>
</context>
<context>
    <name>LvEditorMapMenu</name>
    <message>
        <source>&amp;Eingebaute Weltkarte</source>
        <translation>&amp;Built-in World Map</translation>
    </message>
    <message>
        <source>&amp;Keine Karte</source>
        <translation>&amp;No Map</translation>
    </message>
    <message>
        <source>Kachel&amp;ordner…</source>
        <translation>Tile &amp;Folder…</translation>
    </message>
    <message>
        <source>&amp;MBTiles-Datei…</source>
        <translation>&amp;MBTiles File…</translation>
    </message>
    <message>
        <source>Kachel&amp;server…</source>
        <translation>Tile &amp;Server…</translation>
    </message>
    <message>
        <source>Kachelordner wählen</source>
        <translation>Choose a Tile Folder</translation>
    </message>
    <message>
        <source>MBTiles-Datei wählen</source>
        <translation>Choose an MBTiles File</translation>
    </message>
    <message>
        <source>MBTiles-Dateien (*.mbtiles)</source>
        <translation>MBTiles files (*.mbtiles)</translation>
    </message>
    <message>
        <source>Kachelserver</source>
        <translation>Tile Server</translation>
    </message>
    <message>
        <source>Adresse der Kacheln mit {z}, {x} und {y} (oder {-y}, wenn die Zeilen von Süden an zählen).
Bitte die Nutzungsbedingungen des Servers beachten und in den Einstellungen die verlangte
Quellenangabe eintragen.</source>
        <translation>Address of the tiles with {z}, {x} and {y} (or {-y} where rows count from the south).
Please observe the server&apos;s terms of use and enter the attribution that it asks for
in the preferences.</translation>
    </message>
    <message>
        <source>Kar&amp;te</source>
        <translation>&amp;Map</translation>
    </message>
</context>
<context>
    <name>LvExportPictureDialog</name>
    <message>
        <source>&amp;Seitenverhältnis beibehalten</source>
        <translation>&amp;Keep the aspect ratio</translation>
    </message>
    <message>
        <source>&amp;Maßstabsleiste zeichnen</source>
        <translation>Draw the &amp;scale bar</translation>
    </message>
    <message>
        <source>Bild der Karte speichern</source>
        <translation>Save a Picture of the Map</translation>
    </message>
    <message>
        <source>Das Bild wird gezeichnet</source>
        <translation>The picture is being drawn</translation>
    </message>
    <message>
        <source>Speichern</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Abbrechen</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Karte</source>
        <translation>Map</translation>
    </message>
    <message>
        <source>Das Bild braucht einen Dateinamen.</source>
        <translation>The picture needs a file name.</translation>
    </message>
    <message>
        <source>Dateiname</source>
        <translation>File name</translation>
    </message>
    <message>
        <source>&amp;Auswählen…</source>
        <translation>&amp;Choose…</translation>
    </message>
    <message>
        <source>Datei auswählen</source>
        <translation>Choose a File</translation>
    </message>
    <message>
        <source>&amp;Datei:</source>
        <translation>&amp;File:</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>PNG-Bild (verlustfrei)</source>
        <translation>PNG picture (lossless)</translation>
    </message>
    <message>
        <source>JPEG-Bild (klein)</source>
        <translation>JPEG picture (small)</translation>
    </message>
    <message>
        <source>SVG-Zeichnung</source>
        <translation>SVG drawing</translation>
    </message>
    <message>
        <source>PDF-Dokument</source>
        <translation>PDF document</translation>
    </message>
    <message>
        <source>&amp;Format:</source>
        <translation>F&amp;ormat:</translation>
    </message>
    <message>
        <source>Ausschnitt</source>
        <translation>Area</translation>
    </message>
    <message>
        <source>Wie auf der Karte</source>
        <translation>As on the map</translation>
    </message>
    <message>
        <source>Alle gezeigten Spuren</source>
        <translation>All shown tracks</translation>
    </message>
    <message>
        <source>A&amp;usschnitt:</source>
        <translation>&amp;Area:</translation>
    </message>
    <message>
        <source> Pixel</source>
        <translation> pixels</translation>
    </message>
    <message>
        <source>Breite</source>
        <translation>Width</translation>
    </message>
    <message>
        <source>Höhe</source>
        <translation>Height</translation>
    </message>
    <message>
        <source>&amp;Breite:</source>
        <translation>&amp;Width:</translation>
    </message>
    <message>
        <source>&amp;Höhe:</source>
        <translation>&amp;Height:</translation>
    </message>
    <message>
        <source>Vergrößerung der Linien und Schriften</source>
        <translation>Enlargement of lines and texts</translation>
    </message>
    <message>
        <source>So viel größer als auf dem Bildschirm werden Linien und Schriften gezeichnet.</source>
        <translation>Lines and texts are drawn so much larger than on the screen.</translation>
    </message>
    <message>
        <source>-fach</source>
        <translation>times</translation>
    </message>
    <message>
        <source>&amp;Linien und Schriften:</source>
        <translation>&amp;Lines and texts:</translation>
    </message>
    <message>
        <source>Die Datei „%1“ gibt es schon. Soll sie ersetzt werden?</source>
        <translation>The file “%1” exists already. Do you want to replace it?</translation>
    </message>
</context>
<context>
    <name>LvMapBackgroundWorker</name>
    <message>
        <source>Im Ordner „%1“ liegen keine Kartenkacheln der Form {z}/{x}/{y}.png.</source>
        <translation>The folder “%1” has no map tiles of the form {z}/{x}/{y}.png.</translation>
    </message>
    <message>
        <source>Die Karte „%1“ gibt es nicht.</source>
        <translation>There is no map “%1”.</translation>
    </message>
    <message>
        <source>„%1“ ist keine lesbare Kartendatei (MBTiles mit Bildern).</source>
        <translation>“%1” is not a readable map file (MBTiles with pictures).</translation>
    </message>
</context>
<context>
    <name>LvMapWidget</name>
    <message>
        <source>Karte</source>
        <translation>Map</translation>
    </message>
    <message>
        <source>Karte mit den Spuren. Die Pfeiltasten verschieben sie, Plus und Minus vergrößern und verkleinern sie, Pos1 zeigt alle Spuren.</source>
        <translation>Map with the tracks. The arrow keys move it, plus and minus zoom in and out, Home shows all tracks.</translation>
    </message>
</context>
<context>
    <name>LvMeasureText</name>
    <message>
        <source>%1 km</source>
        <translation>%1 km</translation>
    </message>
    <message>
        <source>%1 m</source>
        <translation>%1 m</translation>
    </message>
    <message>
        <source>%1 km/h</source>
        <translation>%1 km/h</translation>
    </message>
    <message>
        <source>%1:%2 min</source>
        <translation>%1:%2 min</translation>
    </message>
    <message>
        <source>%1:%2:%3 h</source>
        <translation>%1:%2:%3 h</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>date, time</comment>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>LvMessagePanel</name>
    <message>
        <source>Meldungen</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>In die &amp;Zwischenablage kopieren</source>
        <translation>Copy to the &amp;Clipboard</translation>
    </message>
    <message>
        <source>&amp;Leeren</source>
        <translation>C&amp;lear</translation>
    </message>
</context>
<context>
    <name>LvPictureExporter</name>
    <message>
        <source>Der Arbeitsspeicher reicht für das Bild nicht aus.</source>
        <translation>There is not enough memory for the picture.</translation>
    </message>
    <message>
        <source>Das Bild „%1“ konnte nicht geschrieben werden: %2</source>
        <translation>The picture “%1” could not be written: %2</translation>
    </message>
    <message>
        <source>Die Karte „%1“ ist nicht verfügbar: %2</source>
        <translation>The map “%1” is not available: %2</translation>
    </message>
    <message>
        <source>Der Kartenserver liefert nicht alle Kacheln, die das Bild braucht.</source>
        <translation>The map server does not deliver all tiles that the picture needs.</translation>
    </message>
</context>
<context>
    <name>LvPicturePrinter</name>
    <message>
        <source>Karte drucken</source>
        <translation>Print the Map</translation>
    </message>
    <message>
        <source>Druckvorschau</source>
        <translation>Print Preview</translation>
    </message>
    <message>
        <source>Der Drucker „%1“ nimmt nichts an.</source>
        <translation>The printer “%1” accepts nothing.</translation>
    </message>
    <message>
        <source>Das Drucken ist fehlgeschlagen.</source>
        <translation>Printing has failed.</translation>
    </message>
</context>
<context>
    <name>LvPlaceEdit</name>
    <message>
        <source>%1: Koordinaten</source>
        <comment>start or end of a line</comment>
        <translation>%1: coordinates</translation>
    </message>
    <message>
        <source>z. B. 53,14 N 8,80 O</source>
        <translation>e.g. 53.14 N 8.80 E</translation>
    </message>
    <message>
        <source>Hier kann man Koordinaten in jeder üblichen Schreibweise einfügen, auch die Adresse einer Karte im Internet.</source>
        <translation>Coordinates in any usual form can be pasted here, also the address of a map in the internet.</translation>
    </message>
    <message>
        <source>%1: Ort aus der Liste</source>
        <comment>start or end of a line</comment>
        <translation>%1: place from the list</translation>
    </message>
    <message>
        <source>(kein Ort aus der Liste)</source>
        <translation>(no place from the list)</translation>
    </message>
    <message>
        <source>Auf der Karte wählen</source>
        <translation>Choose on the Map</translation>
    </message>
    <message>
        <source>%1: auf der Karte wählen</source>
        <comment>start or end of a line</comment>
        <translation>%1: choose on the map</translation>
    </message>
    <message>
        <source>Koordinaten:</source>
        <translation>Coordinates:</translation>
    </message>
    <message>
        <source>Ort:</source>
        <translation>Place:</translation>
    </message>
    <message>
        <source>Breite:</source>
        <translation>Latitude:</translation>
    </message>
    <message>
        <source>Länge:</source>
        <translation>Longitude:</translation>
    </message>
    <message>
        <source>„%1“ ist keine Position, oder man kann es auf mehr als eine Weise lesen.</source>
        <translation>“%1” is not a position, or it can be read in more than one way.</translation>
    </message>
    <message>
        <source>Die Breite liegt nicht zwischen 90° Süd und 90° Nord.</source>
        <translation>The latitude is not between 90° south and 90° north.</translation>
    </message>
    <message>
        <source>Die Länge liegt nicht zwischen 180° West und 180° Ost.</source>
        <translation>The longitude is not between 180° west and 180° east.</translation>
    </message>
</context>
<context>
    <name>LvPreferencesDialog</name>
    <message>
        <source>Einstellungen</source>
        <translation>Preferences</translation>
    </message>
    <message>
        <source>Bereiche der Einstellungen</source>
        <translation>Sections of the preferences</translation>
    </message>
    <message>
        <source>Karte</source>
        <translation>Map</translation>
    </message>
    <message>
        <source>Dokumente</source>
        <translation>Documents</translation>
    </message>
</context>
<context>
    <name>LvPreferencesDocuments</name>
    <message>
        <source>Speichern</source>
        <translation>Saving</translation>
    </message>
    <message>
        <source>Die Spuren stehen &amp;im Dokument.</source>
        <translation>The tracks stand &amp;in the document.</translation>
    </message>
    <message>
        <source>Jede Spur hat eine &amp;eigene Datei neben dem Dokument.</source>
        <translation>Each track has a file of its &amp;own beside the document.</translation>
    </message>
    <message>
        <source>Ein Dokument ist eine einzige Datei, die man leicht weitergeben kann.</source>
        <translation>A document is a single file that is easily passed on.</translation>
    </message>
    <message>
        <source>Unveränderte Spuren werden nicht noch einmal geschrieben.</source>
        <translation>Unchanged tracks are not written again.</translation>
    </message>
</context>
<context>
    <name>LvPreferencesMap</name>
    <message>
        <source>Hintergrundkarte</source>
        <translation>Background Map</translation>
    </message>
    <message>
        <source>&amp;Durchsuchen …</source>
        <translation>&amp;Browse…</translation>
    </message>
    <message>
        <source>Art der Karte</source>
        <translation>Kind of map</translation>
    </message>
    <message>
        <source>Eingebaute Weltkarte</source>
        <translation>Built-in world map</translation>
    </message>
    <message>
        <source>Keine Karte</source>
        <translation>No map</translation>
    </message>
    <message>
        <source>Ordner mit Kacheln</source>
        <translation>Folder with tiles</translation>
    </message>
    <message>
        <source>MBTiles-Datei</source>
        <translation>MBTiles file</translation>
    </message>
    <message>
        <source>Kacheln aus dem Internet</source>
        <translation>Tiles from the internet</translation>
    </message>
    <message>
        <source>Quellenangabe der Karte</source>
        <translation>Attribution of the map</translation>
    </message>
    <message>
        <source>wie in der Karte selbst angegeben</source>
        <translation>as given in the map itself</translation>
    </message>
    <message>
        <source>Wem die Karte gehört. Viele Anbieter verlangen, dass dies auf jedem Bild steht.</source>
        <translation>Who owns the map. Many providers require this on every picture.</translation>
    </message>
    <message>
        <source>&amp;Karte:</source>
        <translation>&amp;Map:</translation>
    </message>
    <message>
        <source>&amp;Quellenangabe:</source>
        <translation>A&amp;ttribution:</translation>
    </message>
    <message>
        <source>Es ist kein Ordner angegeben.</source>
        <translation>No folder is given.</translation>
    </message>
    <message>
        <source>Es ist keine Datei angegeben.</source>
        <translation>No file is given.</translation>
    </message>
    <message>
        <source>Den Ordner „%1“ gibt es nicht.</source>
        <translation>There is no folder “%1”.</translation>
    </message>
    <message>
        <source>Die Datei „%1“ gibt es nicht.</source>
        <translation>There is no file “%1”.</translation>
    </message>
    <message>
        <source>Es ist keine Adresse angegeben.</source>
        <translation>No address is given.</translation>
    </message>
    <message>
        <source>&amp;Ort:</source>
        <translation>&amp;Place:</translation>
    </message>
    <message>
        <source>&amp;Ordner:</source>
        <translation>&amp;Folder:</translation>
    </message>
    <message>
        <source>Datei:</source>
        <translation>File:</translation>
    </message>
    <message>
        <source>&amp;Adresse:</source>
        <translation>Add&amp;ress:</translation>
    </message>
    <message>
        <source>Ordner mit Kacheln wählen</source>
        <translation>Choose a Folder with Tiles</translation>
    </message>
    <message>
        <source>MBTiles-Datei wählen</source>
        <translation>Choose an MBTiles File</translation>
    </message>
    <message>
        <source>MBTiles-Dateien (*.mbtiles)</source>
        <translation>MBTiles files (*.mbtiles)</translation>
    </message>
    <message>
        <source>Alle Dateien (*)</source>
        <translation>All files (*)</translation>
    </message>
</context>
<context>
    <name>LvShortcutsDialog</name>
    <message>
        <source>Tastenkürzel</source>
        <translation>Keyboard Shortcuts</translation>
    </message>
    <message>
        <source>Pfeiltasten</source>
        <translation>Arrow keys</translation>
    </message>
    <message>
        <source>Karte: verschieben</source>
        <translation>Map: move</translation>
    </message>
    <message>
        <source>Karte: vergrößern, verkleinern</source>
        <translation>Map: zoom in, zoom out</translation>
    </message>
    <message>
        <source>Pos1</source>
        <translation>Home</translation>
    </message>
    <message>
        <source>Karte: alle Spuren zeigen</source>
        <translation>Map: show all tracks</translation>
    </message>
    <message>
        <source>Mausrad, Doppelklick</source>
        <translation>Mouse wheel, double click</translation>
    </message>
    <message>
        <source>Karte: unter dem Zeiger vergrößern</source>
        <translation>Map: zoom in under the pointer</translation>
    </message>
    <message>
        <source>Pfeil links, Pfeil rechts</source>
        <translation>Left arrow, right arrow</translation>
    </message>
    <message>
        <source>Profil: Zeiger verschieben</source>
        <translation>Profile: move the cursor</translation>
    </message>
    <message>
        <source>Leertaste</source>
        <translation>Space</translation>
    </message>
    <message>
        <source>Liste der Spuren: zeigen oder ausblenden</source>
        <translation>List of tracks: show or hide</translation>
    </message>
    <message>
        <source>Tasten</source>
        <translation>Keys</translation>
    </message>
    <message>
        <source>Wirkung</source>
        <translation>Effect</translation>
    </message>
</context>
<context>
    <name>LvStylePanel</name>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Darstellung der Spur</source>
        <translation>Style of the track</translation>
    </message>
    <message>
        <source>Für alle Spuren</source>
        <translation>For all tracks</translation>
    </message>
    <message>
        <source>Die nächste Änderung gibt allen Spuren diese Darstellung. Ihre Form behalten sie, solange nicht die Form selbst geändert wird.</source>
        <translation>The next change gives this style to all tracks. They keep their shape unless the shape itself is changed.</translation>
    </message>
    <message>
        <source>Als Vorgabe verwenden</source>
        <translation>Use as Default</translation>
    </message>
    <message>
        <source>Spuren, die ohne eigene Darstellung geladen werden, sehen künftig so aus.</source>
        <translation>Tracks that are loaded without a style of their own will look like this.</translation>
    </message>
    <message>
        <source>Form und Marke</source>
        <translation>Shape and marker</translation>
    </message>
    <message>
        <source>Form:</source>
        <translation>Shape:</translation>
    </message>
    <message>
        <source>Linie zeichnen</source>
        <translation>Draw the line</translation>
    </message>
    <message>
        <source>Linienfarbe</source>
        <translation>Line colour</translation>
    </message>
    <message>
        <source>Linienfarbe wählen</source>
        <translation>Choose the Line Colour</translation>
    </message>
    <message>
        <source>Linienfarbe:</source>
        <translation>Line colour:</translation>
    </message>
    <message>
        <source>Linienbreite</source>
        <translation>Line width</translation>
    </message>
    <message>
        <source>Linienbreite:</source>
        <translation>Line width:</translation>
    </message>
    <message>
        <source>Linienart</source>
        <translation>Line style</translation>
    </message>
    <message>
        <source>keine</source>
        <translation>none</translation>
    </message>
    <message>
        <source>durchgezogen</source>
        <translation>solid</translation>
    </message>
    <message>
        <source>gestrichelt</source>
        <translation>dashed</translation>
    </message>
    <message>
        <source>gepunktet</source>
        <translation>dotted</translation>
    </message>
    <message>
        <source>Strich, Punkt</source>
        <translation>dash, dot</translation>
    </message>
    <message>
        <source>Strich, zwei Punkte</source>
        <translation>dash, two dots</translation>
    </message>
    <message>
        <source>Linienart:</source>
        <translation>Line style:</translation>
    </message>
    <message>
        <source>Breite des Saums</source>
        <translation>Width of the halo</translation>
    </message>
    <message>
        <source>Ein heller Saum hebt die Linie von der Karte ab.</source>
        <translation>A light halo sets the line off from the map.</translation>
    </message>
    <message>
        <source>ohne</source>
        <translation>none</translation>
    </message>
    <message>
        <source>Saum:</source>
        <translation>Halo:</translation>
    </message>
    <message>
        <source>Fläche füllen</source>
        <translation>Fill the area</translation>
    </message>
    <message>
        <source>Füllfarbe</source>
        <translation>Fill colour</translation>
    </message>
    <message>
        <source>Füllfarbe wählen</source>
        <translation>Choose the Fill Colour</translation>
    </message>
    <message>
        <source>Füllfarbe:</source>
        <translation>Fill colour:</translation>
    </message>
    <message>
        <source>Ohne Linie und ohne Füllung ist nichts zu sehen.</source>
        <translation>Without line and filling there is nothing to be seen.</translation>
    </message>
    <message>
        <source>Glättung in Prozent</source>
        <translation>Smoothing in percent</translation>
    </message>
    <message>
        <source>Wie weit die Punkte zur geraden Linie hin gezogen werden.</source>
        <translation>How far the points are pulled towards the straight line.</translation>
    </message>
    <message>
        <source> %</source>
        <translation> %</translation>
    </message>
    <message>
        <source>Glättung:</source>
        <translation>Smoothing:</translation>
    </message>
    <message>
        <source>Abschnitte der Glättung</source>
        <translation>Sections of the smoothing</translation>
    </message>
    <message>
        <source>In so viele Abschnitte wird die Spur geteilt; je mehr es sind, desto mehr bleibt von ihrem Verlauf.</source>
        <translation>The track is divided into so many sections; the more there are, the more of its course remains.</translation>
    </message>
    <message>
        <source>Abschnitte:</source>
        <translation>Sections:</translation>
    </message>
</context>
<context>
    <name>LvTrackDetailsPanel</name>
    <message>
        <source>Name der Spur</source>
        <translation>Name of the track</translation>
    </message>
    <message>
        <source>ohne Namen</source>
        <translation>without a name</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Beschreibung:</source>
        <translation>Description:</translation>
    </message>
    <message>
        <source>Form:</source>
        <translation>Shape:</translation>
    </message>
    <message>
        <source>Punkte:</source>
        <translation>Points:</translation>
    </message>
    <message>
        <source>Länge:</source>
        <translation>Length:</translation>
    </message>
    <message>
        <source>Beginn:</source>
        <translation>Start:</translation>
    </message>
    <message>
        <source>Ende:</source>
        <translation>End:</translation>
    </message>
    <message>
        <source>Dauer:</source>
        <translation>Duration:</translation>
    </message>
    <message>
        <source>In Bewegung:</source>
        <translation>Moving:</translation>
    </message>
    <message>
        <source>Im Durchschnitt:</source>
        <translation>Average:</translation>
    </message>
    <message>
        <source>Ohne Pausen:</source>
        <translation>Without breaks:</translation>
    </message>
    <message>
        <source>Höchstens:</source>
        <translation>At most:</translation>
    </message>
    <message>
        <source>Anstieg:</source>
        <translation>Ascent:</translation>
    </message>
    <message>
        <source>Abstieg:</source>
        <translation>Descent:</translation>
    </message>
    <message>
        <source>Höhe:</source>
        <translation>Elevation:</translation>
    </message>
    <message>
        <source>Südwestecke:</source>
        <translation>South-west corner:</translation>
    </message>
    <message>
        <source>Nordostecke:</source>
        <translation>North-east corner:</translation>
    </message>
    <message>
        <source>Auf und Ab von weniger als %1 Metern zählt nicht: So viel schwanken Messungen.</source>
        <translation>Ups and downs of less than %1 metres do not count: measurements vary that much.</translation>
    </message>
    <message>
        <source>Die Zeit, in der man schneller als %1 km/h war.</source>
        <translation>The time at more than %1 km/h.</translation>
    </message>
    <message>
        <source>Gemittelt über jeweils %1 Sekunden.</source>
        <translation>Averaged over %1 seconds each.</translation>
    </message>
    <message>
        <source>Einzelheiten der Spur</source>
        <translation>Details of the track</translation>
    </message>
    <message numerus="yes">
        <source>%1 in %n Abschnitten</source>
        <translation>
            <numerusform>%1 in %n segment</numerusform>
            <numerusform>%1 in %n segments</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 bis %2</source>
        <translation>%1 to %2</translation>
    </message>
</context>
<context>
    <name>LvTrackDocument</name>
    <message>
        <source>Spur „%1“ hinzufügen</source>
        <translation>Add Track “%1”</translation>
    </message>
    <message>
        <source>%1 Spuren hinzufügen</source>
        <translation>Add %1 Tracks</translation>
    </message>
    <message>
        <source>Spur „%1“ löschen</source>
        <translation>Delete Track “%1”</translation>
    </message>
    <message>
        <source>Spur „%1“ verschieben</source>
        <translation>Move Track “%1”</translation>
    </message>
    <message>
        <source>Spur „%1“ umbenennen</source>
        <translation>Rename Track “%1”</translation>
    </message>
    <message>
        <source>Darstellung von „%1“ ändern</source>
        <translation>Change Style of “%1”</translation>
    </message>
    <message>
        <source>Darstellung aller Spuren ändern</source>
        <translation>Change Style of All Tracks</translation>
    </message>
    <message>
        <source>Spur „%1“ einblenden</source>
        <translation>Show Track “%1”</translation>
    </message>
    <message>
        <source>Spur „%1“ ausblenden</source>
        <translation>Hide Track “%1”</translation>
    </message>
    <message>
        <source>Alle Spuren einblenden</source>
        <translation>Show All Tracks</translation>
    </message>
    <message>
        <source>Alle Spuren ausblenden</source>
        <translation>Hide All Tracks</translation>
    </message>
    <message>
        <source>Deckkraft der Karte ändern</source>
        <translation>Change Opacity of the Map</translation>
    </message>
    <message>
        <source>Alle Spuren löschen</source>
        <translation>Delete All Tracks</translation>
    </message>
</context>
<context>
    <name>LvTrackDocumentFile</name>
    <message>
        <source>Spurdokumente (*.%1)</source>
        <translation>Track documents (*.%1)</translation>
    </message>
    <message>
        <source>Den Ordner „%1“ gibt es nicht.</source>
        <translation>There is no folder “%1”.</translation>
    </message>
    <message>
        <source>Die Datei „%1“ ist nicht lesbar.</source>
        <translation>The file “%1” cannot be read.</translation>
    </message>
    <message>
        <source>Die Datei „%1“ gibt es nicht.</source>
        <translation>There is no file “%1”.</translation>
    </message>
    <message>
        <source>Die Datei „%1“ ist beschädigt: %2</source>
        <translation>The file “%1” is damaged: %2</translation>
    </message>
    <message>
        <source>Die Datei „%1“ ist kein Spurdokument.</source>
        <translation>The file “%1” is not a track document.</translation>
    </message>
    <message>
        <source>Die Datei „%1“ stammt aus einer neueren Fassung des Programms.</source>
        <translation>The file “%1” comes from a newer version of the program.</translation>
    </message>
    <message>
        <source>Die Spurdatei „%1“ fehlt oder enthält keine Spur.</source>
        <translation>The track file “%1” is missing or has no track in it.</translation>
    </message>
    <message>
        <source>Die Spur „%1“ hat so viele Punkte mit Texten oder Sekundenbruchteilen, dass sich ihre Datei nicht wieder öffnen ließe.</source>
        <translation>The track “%1” has so many points with texts or fractions of seconds that its file could not be opened again.</translation>
    </message>
    <message>
        <source>Die Spuren haben so viele Punkte mit Texten oder Sekundenbruchteilen, dass sich das Dokument nicht wieder öffnen ließe. Mit einer eigenen Datei für jede Spur (siehe Einstellungen) ist mehr Platz.</source>
        <translation>The tracks have so many points with texts or fractions of seconds that the document could not be opened again. With a file of its own for each track (see the preferences) there is more room.</translation>
    </message>
    <message>
        <source>Es sind so viele Spuren, dass sich das Dokument nicht wieder öffnen ließe.</source>
        <translation>There are so many tracks that the document could not be opened again.</translation>
    </message>
    <message>
        <source>Die Spuren haben so viele Punkte, dass sich das Dokument nicht wieder öffnen ließe. Mit einer eigenen Datei für jede Spur (siehe Einstellungen) ist mehr Platz.</source>
        <translation>The tracks have so many points that the document could not be opened again. With a file of its own for each track (see the preferences) there is more room.</translation>
    </message>
    <message>
        <source>Die Spur „%1“ hat so viele Punkte, dass sich ihre Datei nicht wieder öffnen ließe.</source>
        <translation>The track “%1” has so many points that its file could not be opened again.</translation>
    </message>
</context>
<context>
    <name>LvTrackEditorWindow</name>
    <message>
        <source>Spuren</source>
        <translation>Tracks</translation>
    </message>
    <message>
        <source>Stil</source>
        <translation>Style</translation>
    </message>
    <message>
        <source>Einzelheiten</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Profil</source>
        <translation>Profile</translation>
    </message>
    <message>
        <source>Meldungen</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>Ort unter dem Zeiger</source>
        <translation>Place under the pointer</translation>
    </message>
    <message>
        <source>Vergrößerung der Karte</source>
        <translation>Zoom of the map</translation>
    </message>
    <message>
        <source>Fortschritt beim Öffnen</source>
        <translation>Progress of opening</translation>
    </message>
    <message>
        <source>%v von %m Dateien</source>
        <translation>%v of %m files</translation>
    </message>
    <message>
        <source>Abbrechen</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Öffnet keine weiteren Dateien mehr.</source>
        <translation>Opens no further files.</translation>
    </message>
    <message>
        <source>&amp;Datei</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>&amp;Neu</source>
        <translation>&amp;New</translation>
    </message>
    <message>
        <source>Ö&amp;ffnen…</source>
        <translation>&amp;Open…</translation>
    </message>
    <message>
        <source>&amp;Zuletzt benutzt</source>
        <translation>Recently &amp;Used</translation>
    </message>
    <message>
        <source>&amp;Speichern</source>
        <translation>&amp;Save</translation>
    </message>
    <message>
        <source>Speichern &amp;unter…</source>
        <translation>Save &amp;As…</translation>
    </message>
    <message>
        <source>&amp;Exportieren</source>
        <translation>&amp;Export</translation>
    </message>
    <message>
        <source>Spuren als &amp;GPX…</source>
        <translation>Tracks as &amp;GPX…</translation>
    </message>
    <message>
        <source>Spuren als Geo&amp;JSON…</source>
        <translation>Tracks as Geo&amp;JSON…</translation>
    </message>
    <message>
        <source>&amp;Bild der Karte…</source>
        <translation>&amp;Picture of the Map…</translation>
    </message>
    <message>
        <source>&amp;Drucken…</source>
        <translation>&amp;Print…</translation>
    </message>
    <message>
        <source>Druck&amp;vorschau…</source>
        <translation>Print Pre&amp;view…</translation>
    </message>
    <message>
        <source>&amp;Beenden</source>
        <translation>&amp;Quit</translation>
    </message>
    <message>
        <source>&amp;Bearbeiten</source>
        <translation>&amp;Edit</translation>
    </message>
    <message>
        <source>&amp;Rückgängig</source>
        <translation>&amp;Undo</translation>
    </message>
    <message>
        <source>&amp;Wiederholen</source>
        <translation>&amp;Redo</translation>
    </message>
    <message>
        <source>&amp;Rückgängig: %1</source>
        <translation>&amp;Undo: %1</translation>
    </message>
    <message>
        <source>&amp;Wiederholen: %1</source>
        <translation>&amp;Redo: %1</translation>
    </message>
    <message>
        <source>&amp;Alle Spuren entfernen</source>
        <translation>Remove &amp;All Tracks</translation>
    </message>
    <message>
        <source>&amp;Einstellungen…</source>
        <translation>&amp;Preferences…</translation>
    </message>
    <message>
        <source>&amp;Spur</source>
        <translation>&amp;Track</translation>
    </message>
    <message>
        <source>Auf der Karte &amp;zeigen</source>
        <translation>&amp;Show on the Map</translation>
    </message>
    <message>
        <source>Ein- oder &amp;ausblenden</source>
        <translation>S&amp;how or Hide</translation>
    </message>
    <message>
        <source>Umbe&amp;nennen</source>
        <translation>&amp;Rename</translation>
    </message>
    <message>
        <source>Nach &amp;oben</source>
        <translation>Move &amp;Up</translation>
    </message>
    <message>
        <source>Nach &amp;unten</source>
        <translation>Move &amp;Down</translation>
    </message>
    <message>
        <source>&amp;Entfernen</source>
        <translation>R&amp;emove</translation>
    </message>
    <message>
        <source>&amp;Fluglinie…</source>
        <translation>&amp;Flight Line…</translation>
    </message>
    <message>
        <source>&amp;Ansicht</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>Ver&amp;größern</source>
        <translation>Zoom &amp;In</translation>
    </message>
    <message>
        <source>Ver&amp;kleinern</source>
        <translation>Zoom &amp;Out</translation>
    </message>
    <message>
        <source>&amp;Alle Spuren zeigen</source>
        <translation>Show &amp;All Tracks</translation>
    </message>
    <message>
        <source>&amp;Vollbild</source>
        <translation>&amp;Full Screen</translation>
    </message>
    <message>
        <source>&amp;Hilfe</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>&amp;Tastenkürzel</source>
        <translation>&amp;Keyboard Shortcuts</translation>
    </message>
    <message>
        <source>Ü&amp;ber das Programm</source>
        <translation>&amp;About the Program</translation>
    </message>
    <message>
        <source>Über &amp;Qt</source>
        <translation>About &amp;Qt</translation>
    </message>
    <message>
        <source>Werkzeuge</source>
        <translation>Tools</translation>
    </message>
    <message>
        <source>Spuren umordnen</source>
        <translation>Reorder Tracks</translation>
    </message>
    <message>
        <source>Das Öffnen wurde abgebrochen.</source>
        <translation>Opening was cancelled.</translation>
    </message>
    <message>
        <source>Eine Spur geöffnet.</source>
        <translation>One track opened.</translation>
    </message>
    <message>
        <source>%1 Spuren geöffnet.</source>
        <translation>%1 tracks opened.</translation>
    </message>
    <message>
        <source>Liste &amp;leeren</source>
        <translation>&amp;Clear the List</translation>
    </message>
    <message>
        <source>Stufe %1</source>
        <translation>Level %1</translation>
    </message>
    <message>
        <source>Unbenannt</source>
        <translation>Untitled</translation>
    </message>
    <message>
        <source>%1[*] – %2</source>
        <translation>%1[*] – %2</translation>
    </message>
    <message>
        <source>Über das Programm</source>
        <translation>About the Program</translation>
    </message>
    <message>
        <source>&lt;h3&gt;%1 %2&lt;/h3&gt;&lt;p&gt;Zeigt GPS-Spuren auf einer Karte und gibt jeder einen eigenen Stil.&lt;/p&gt;&lt;p&gt;Die eingebaute Karte stammt von Natural Earth und ist gemeinfrei.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;%1 %2&lt;/h3&gt;&lt;p&gt;Shows GPS tracks on a map and gives each a style of its own.&lt;/p&gt;&lt;p&gt;The built-in map comes from Natural Earth and is in the public domain.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Was gerade gelesen oder geschrieben wird</source>
        <translation>What is being read or written</translation>
    </message>
    <message>
        <source>Lesen oder Schreiben im Gange</source>
        <translation>Reading or writing in progress</translation>
    </message>
    <message>
        <source>„%1“ ist geschrieben.</source>
        <translation>“%1” has been written.</translation>
    </message>
</context>
<context>
    <name>LvTrackExporter</name>
    <message>
        <source>GPX-Dateien (*.gpx)</source>
        <translation>GPX files (*.gpx)</translation>
    </message>
    <message>
        <source>GeoJSON-Dateien (*.geojson *.json)</source>
        <translation>GeoJSON files (*.geojson *.json)</translation>
    </message>
    <message>
        <source>Der Dateiname muss auf .gpx, .geojson oder .json enden.</source>
        <translation>The file name must end with .gpx, .geojson or .json.</translation>
    </message>
    <message>
        <source>Es gibt keine Spur mit Punkten.</source>
        <translation>There is no track with points.</translation>
    </message>
    <message>
        <source>Die Datei „%1“ konnte nicht geschrieben werden: %2</source>
        <translation>The file “%1” could not be written: %2</translation>
    </message>
    <message>
        <source>Die Spuren haben so viele Punkte, dass sich die Datei nicht wieder öffnen ließe.</source>
        <translation>The tracks have so many points that the file could not be opened again.</translation>
    </message>
</context>
<context>
    <name>LvTrackListPanel</name>
    <message>
        <source>Liste der Spuren</source>
        <translation>List of tracks</translation>
    </message>
    <message>
        <source>&amp;Karte neben den Spuren:</source>
        <translation>Map &amp;beside the tracks:</translation>
    </message>
    <message>
        <source>Deckkraft der Karte neben den Spuren</source>
        <translation>Opacity of the map beside the tracks</translation>
    </message>
    <message>
        <source>Blendet die Karte überall aus, wo keine Spur ist.</source>
        <translation>Fades the map wherever there is no track.</translation>
    </message>
</context>
<context>
    <name>LvTrackLoadJob</name>
    <message>
        <source>%1: Eine Spur ohne Punkte wurde ausgelassen.</source>
        <translation>%1: One track without points was left out.</translation>
    </message>
    <message>
        <source>%1: %2 Spuren ohne Punkte wurden ausgelassen.</source>
        <translation>%1: %2 tracks without points were left out.</translation>
    </message>
</context>
<context>
    <name>LvTrackProfilePlot</name>
    <message>
        <source>Höhen- und Geschwindigkeitsprofil</source>
        <translation>Elevation and speed profile</translation>
    </message>
    <message>
        <source>Mit der Maus oder den Pfeiltasten bewegt man sich an der Spur entlang; Bild auf und Bild ab machen größere Schritte, Pos1 und Ende führen zum Anfang und zum Ende.</source>
        <translation>The mouse and the arrow keys move along the track; Page Up and Page Down take larger steps, Home and End lead to the start and the end.</translation>
    </message>
    <message>
        <source>m</source>
        <translation>m</translation>
    </message>
    <message>
        <source>h</source>
        <translation>h</translation>
    </message>
    <message>
        <source>km</source>
        <translation>km</translation>
    </message>
    <message>
        <source>km/h</source>
        <translation>km/h</translation>
    </message>
    <message>
        <source>Für diese Spur gibt es kein Profil: Sie hat weder Höhen noch Zeiten, oder sie führt nirgendwohin.</source>
        <translation>There is no profile of this track: it has neither elevations nor times, or it leads nowhere.</translation>
    </message>
</context>
<context>
    <name>LvTrackProfileWidget</name>
    <message>
        <source>Über:</source>
        <translation>Over:</translation>
    </message>
    <message>
        <source>Waagerechte Achse des Profils</source>
        <translation>Horizontal axis of the profile</translation>
    </message>
    <message>
        <source>Entfernung</source>
        <translation>Distance</translation>
    </message>
    <message>
        <source>Zeit</source>
        <translation>Time</translation>
    </message>
</context>
<context>
    <name>LvTrackRowsModel</name>
    <message>
        <source>Die Spur ist auf der Karte zu sehen.</source>
        <translation>The track is shown on the map.</translation>
    </message>
    <message>
        <source>Die Spur ist ausgeblendet.</source>
        <translation>The track is hidden.</translation>
    </message>
    <message>
        <source>sichtbar</source>
        <translation>shown</translation>
    </message>
    <message>
        <source>ausgeblendet</source>
        <translation>hidden</translation>
    </message>
    <message>
        <source>Zeigen</source>
        <translation>Show</translation>
    </message>
</context>
</TS>
