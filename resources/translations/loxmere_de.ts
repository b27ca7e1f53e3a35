<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>MainWindow</name>
    <message>
        <source>Load all tracks</source>
        <translation>Alle Tracks laden</translation>
    </message>
    <message>
        <source> (%1 Points)</source>
        <translation> (%1 Punkte)</translation>
    </message>
    <message>
        <source>Merged Track</source>
        <translation>Zusammengeführter Track</translation>
    </message>
    <message>
        <source>Show settings dialog</source>
        <translation>Einstellungen anzeigen</translation>
    </message>
    <message>
        <source>Show information about this program</source>
        <translation>Informationen über dieses Programm anzeigen</translation>
    </message>
    <message>
        <source>Display the help page for this program</source>
        <translation>Hilfeseite zu diesem Programm anzeigen</translation>
    </message>
    <message>
        <source>Change the GPS coordinates on all loaded images to their preview values</source>
        <translation>GPS-Koordinaten aller geladenen Fotos auf die Werte der Vorschau setzen</translation>
    </message>
    <message>
        <source>Undo the last edit of an images GPS coordinates</source>
        <translation>Letzte Änderung der GPS-Koordinaten rückgängig machen</translation>
    </message>
    <message>
        <source>Clear the list of loaded files</source>
        <translation>Liste der geladenen Dateien leeren</translation>
    </message>
    <message>
        <source>Load file(s) from disk</source>
        <translation>Datei(en) von der Festplatte laden</translation>
    </message>
    <message>
        <source>Obtain data from the previous GPS-Tagged photo</source>
        <translation>Daten vom vorherigen Foto mit GPS-Daten übernehmen</translation>
    </message>
    <message>
        <source>Obtain data from the following GPS-Tagged photo</source>
        <translation>Daten vom folgenden Foto mit GPS-Daten übernehmen</translation>
    </message>
    <message>
        <source>Obtain data from the closest GPS-Tagged photo</source>
        <translation>Daten vom zeitlich nächsten Foto mit GPS-Daten übernehmen</translation>
    </message>
    <message>
        <source>If time difference in minutes between two images is greater than this number no GPS position will be assigned</source>
        <translation>Ist der Zeitunterschied zwischen zwei Fotos in Minuten größer als dieser Wert, wird keine GPS-Position zugewiesen</translation>
    </message>
    <message>
        <source>Max. time diff.</source>
        <translation>Max. Zeitdiff.</translation>
    </message>
    <message>
        <source>min.</source>
        <translation>Min.</translation>
    </message>
    <message>
        <source>Set GPS position of all photos to user specified value</source>
        <translation>GPS-Position aller Fotos auf einen eigenen Wert setzen</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Breitengrad</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Längengrad</translation>
    </message>
    <message>
        <source>e.g. -19.178194
or 19°10&apos;41.5&quot;S</source>
        <translation>z. B. -19.178194
oder 19°10&apos;41.5&quot;S</translation>
    </message>
    <message>
        <source>e.g. 46.501221
or 46°30&apos;4.4&quot;E</source>
        <translation>z. B. 46.501221
oder 46°30&apos;4.4&quot;E</translation>
    </message>
    <message>
        <source>If time difference in minutes between the image an the nearest gpx data point is greater than this number no GPS position will be assigned</source>
        <translation>Ist der Zeitunterschied zwischen dem Foto und dem nächsten GPX-Punkt in Minuten größer als dieser Wert, wird keine GPS-Position zugewiesen</translation>
    </message>
    <message>
        <source>Load GPX</source>
        <translation>GPX laden</translation>
    </message>
    <message>
        <source>Remove GPS data from all files</source>
        <translation>Alle GPS-Daten entfernen</translation>
    </message>
    <message>
        <source>Loading files</source>
        <translation>Dateien werden geladen</translation>
    </message>
    <message>
        <source>%v of %m</source>
        <translation>%v von %m</translation>
    </message>
    <message>
        <source>Syncing GPS data</source>
        <translation>GPS-Daten werden synchronisiert</translation>
    </message>
    <message>
        <source>There are no images with assigned GPS coordinate.

If you are sure the GPS source belongs to the loaded photos,please consult the manual.</source>
        <translation>Keinem Foto wurde eine GPS-Koordinate zugewiesen.

Wenn Sie sicher sind, dass die GPS-Quelle zu den geladenen Fotos gehört, schlagen Sie bitte im Handbuch nach.</translation>
    </message>
    <message>
        <source>Select files</source>
        <translation>Dateien auswählen</translation>
    </message>
    <message>
        <source>All supported files </source>
        <translation>Alle unterstützten Dateien </translation>
    </message>
    <message>
        <source>Could not assign a GPS position to all files using the current assignment mode</source>
        <translation>Mit der aktuellen Zuordnungsart konnte nicht allen Dateien eine GPS-Position zugewiesen werden</translation>
    </message>
    <message>
        <source>Continue anyway</source>
        <translation>Trotzdem fortfahren</translation>
    </message>
    <message>
        <source>Select a different assignment mode</source>
        <translation>Andere Zuordnungsart wählen</translation>
    </message>
    <message>
        <source>Some loaded images already had GPS data which would be overwritten</source>
        <translation>Einige geladene Fotos haben bereits GPS-Daten, die überschrieben würden</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortfahren</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>QuickTime GPS coordinates are read only and can&apos;t be modified or deleted.
If you set GPS tags they will be written into EXIF.
In most application the EXIF tag is preferred over the QuickTime tag.</source>
        <translation>QuickTime-GPS-Koordinaten sind schreibgeschützt und können weder geändert noch gelöscht werden.
Wenn Sie GPS-Tags setzen, werden sie in EXIF geschrieben.
Die meisten Programme bevorzugen den EXIF-Tag gegenüber dem QuickTime-Tag.</translation>
    </message>
    <message>
        <source>Continue?</source>
        <translation>Fortfahren?</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>Bestätigen</translation>
    </message>
    <message>
        <source>Do you really want to delete all GPS information from all currently loaded (%1) images?</source>
        <translation>Möchten Sie wirklich alle GPS-Informationen aus allen derzeit geladenen Fotos (%1) löschen?</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Select track</source>
        <translation>Track auswählen</translation>
    </message>
    <message>
        <source>Load tracks: GPX, KML, KMZ, FIT, TCX, IGC, NMEA, CSV or PLT files, several at once</source>
        <translation>Tracks laden: GPX-, KML-, KMZ-, FIT-, TCX-, IGC-, NMEA-, CSV- oder PLT-Dateien, auch mehrere auf einmal</translation>
    </message>
    <message>
        <source>Select track files</source>
        <translation>Track-Dateien auswählen</translation>
    </message>
    <message>
        <source>Track files (%1)</source>
        <translation>Track-Dateien (%1)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>This track file could not be loaded:</source>
        <translation>Diese Track-Datei konnte nicht geladen werden:</translation>
    </message>
    <message>
        <source>These track files could not be loaded:</source>
        <translation>Diese Track-Dateien konnten nicht geladen werden:</translation>
    </message>
    <message>
        <source>There are multiple tracks inside the selected track file. Please select one.</source>
        <translation>Die ausgewählte Track-Datei enthält mehrere Tracks. Bitte wählen Sie einen aus.</translation>
    </message>
    <message>
        <source>There are multiple tracks inside the selected track files. Please select one.</source>
        <translation>Die ausgewählten Track-Dateien enthalten mehrere Tracks. Bitte wählen Sie einen aus.</translation>
    </message>
    <message>
        <source>Set the time zone and clock correction of each camera</source>
        <translation>Zeitzone und Uhrkorrektur jeder Kamera einstellen</translation>
    </message>
    <message>
        <source>Interpolate</source>
        <translation>Interpolieren</translation>
    </message>
    <message>
        <source>Place a photo between the two track points before and after it, by time,
instead of on the nearest point. Both points must lie within the time difference.</source>
        <translation>Ein Foto zeitlich zwischen die beiden Trackpunkte davor und danach setzen,
statt auf den nächsten Punkt. Beide Punkte müssen innerhalb der Zeitdifferenz liegen.</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Also write the altitude of the track where it has one, below sea level included</source>
        <translation>Auch die Höhe aus dem Track schreiben, wo er eine hat, auch unter dem Meeresspiegel</translation>
    </message>
    <message>
        <source>Loxmere can&apos;t save its undo record in
%1
(%2).

Without it the write can be undone only until Loxmere is closed, and a write that is cut off can&apos;t be undone at all.</source>
        <translation>Loxmere kann seine Aufzeichnung zum Rückgängigmachen nicht speichern in
%1
(%2).

Ohne sie lässt sich das Schreiben nur rückgängig machen, bis Loxmere geschlossen wird, und ein abgebrochenes Schreiben gar nicht.</translation>
    </message>
    <message>
        <source>Write without undo record</source>
        <translation>Ohne Aufzeichnung schreiben</translation>
    </message>
    <message>
        <source>Puts back the GPS data removed on %1 (photos: %2)</source>
        <translation>Stellt die am %1 entfernten GPS-Daten wieder her (Fotos: %2)</translation>
    </message>
    <message>
        <source>Puts back the GPS data as it was before the sync of %1 (photos: %2)</source>
        <translation>Stellt die GPS-Daten wieder her, wie sie vor dem Synchronisieren am %1 waren (Fotos: %2)</translation>
    </message>
    <message>
        <source>Undo record</source>
        <translation>Aufzeichnung zum Rückgängigmachen</translation>
    </message>
    <message>
        <source>Loxmere found the undo record of an earlier write but can&apos;t use it: %1.

No file was changed.%2</source>
        <translation>Loxmere hat die Aufzeichnung eines früheren Schreibvorgangs gefunden, kann sie aber nicht verwenden: %1.

Keine Datei wurde verändert.%2</translation>
    </message>
    <message>
        <source> The record was set aside as
%1</source>
        <translation> Die Aufzeichnung wurde beiseitegelegt als
%1</translation>
    </message>
    <message>
        <source>Parts of the undo record of the last write can&apos;t be used:
%1

Those files won&apos;t be written back.</source>
        <translation>Teile der Aufzeichnung des letzten Schreibvorgangs sind nicht verwendbar:
%1

Diese Dateien werden nicht zurückgeschrieben.</translation>
    </message>
    <message>
        <source>Interrupted write</source>
        <translation>Abgebrochener Schreibvorgang</translation>
    </message>
    <message>
        <source>Loxmere was closed on %1 in the middle of writing GPS data.

Photos it was to write: %2
Photos it may have changed: %3
The others were never touched.

Undo these changes now, or keep them?</source>
        <translation>Loxmere wurde am %1 mitten im Schreiben von GPS-Daten geschlossen.

Zu schreibende Fotos: %2
Möglicherweise veränderte Fotos: %3
Die übrigen wurden nie angerührt.

Diese Änderungen jetzt rückgängig machen oder behalten?</translation>
    </message>
    <message>
        <source>Undo the changes</source>
        <translation>Änderungen rückgängig machen</translation>
    </message>
    <message>
        <source>Keep them</source>
        <translation>Behalten</translation>
    </message>
    <message>
        <source>Show the photos and the track on a map (Ctrl+M)</source>
        <translation>Fotos und Track auf einer Karte zeigen (Strg+M)</translation>
    </message>
    <message>
        <source>Map</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>The map can&apos;t be shown. %1

Everything else works without it. The map needs Marble&apos;s data and plugins (on Debian the packages marble-qt-data and marble-plugins).</source>
        <translation>Die Karte kann nicht angezeigt werden. %1

Alles andere funktioniert auch ohne sie. Die Karte braucht die Daten und Plugins von Marble (unter Debian die Pakete marble-qt-data und marble-plugins).</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Application language changed</source>
        <translation>Sprache der Anwendung geändert</translation>
    </message>
    <message>
        <source>The application language has been changed.
The application needs to be restarted to use the new language.</source>
        <translation>Die Sprache der Anwendung wurde geändert.
Die Anwendung muss neu gestartet werden, um die neue Sprache zu verwenden.</translation>
    </message>
    <message>
        <source>Continue working</source>
        <translation>Weiterarbeiten</translation>
    </message>
    <message>
        <source>Quit now</source>
        <translation>Jetzt beenden</translation>
    </message>
</context>
<context>
    <name>command_line</name>
    <message>
        <source>Gives photos GPS positions.</source>
        <translation>Gibt Fotos GPS-Positionen.</translation>
    </message>
    <message>
        <source>Photos, videos and folders to load. A folder brings the files directly in it.</source>
        <translation>Zu ladende Fotos, Videos und Ordner. Ein Ordner bringt die Dateien, die direkt in ihm liegen.</translation>
    </message>
    <message>
        <source>[FILE|FOLDER...]</source>
        <translation>[DATEI|ORDNER...]</translation>
    </message>
    <message>
        <source>files</source>
        <translation>Dateien</translation>
    </message>
</context>
<context>
    <name>dialog_cameras</name>
    <message>
        <source>Cameras</source>
        <translation>Kameras</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Time zone</source>
        <translation>Zeitzone</translation>
    </message>
    <message>
        <source>Correction</source>
        <translation>Korrektur</translation>
    </message>
    <message>
        <source>1 photo</source>
        <translation>1 Foto</translation>
    </message>
    <message>
        <source>%1 photos</source>
        <translation>%1 Fotos</translation>
    </message>
    <message>
        <source>The zone of the photos that don&apos;t record their own: this computer&apos;s zone, a fixed offset or a place</source>
        <translation>Die Zone der Fotos, die keine eigene aufzeichnen: die Zone dieses Computers, ein fester Versatz oder ein Ort</translation>
    </message>
    <message>
        <source>Added to the time of every photo of this camera, e.g. +00:03:00 or -1d 02:00:00</source>
        <translation>Wird zur Zeit jedes Fotos dieser Kamera addiert, z. B. +00:03:00 oder -1d 02:00:00</translation>
    </message>
    <message>
        <source>From a photo...</source>
        <translation>Aus einem Foto...</translation>
    </message>
    <message>
        <source>Find the correction from a photo of a clock: type the time that it shows</source>
        <translation>Die Korrektur aus dem Foto einer Uhr ermitteln: die Zeit eingeben, die es zeigt</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>This computer&apos;s zone and no correction</source>
        <translation>Zone dieses Computers und keine Korrektur</translation>
    </message>
    <message>
        <source>Load photos to set the clocks of their cameras.</source>
        <translation>Laden Sie Fotos, um die Uhren ihrer Kameras einzustellen.</translation>
    </message>
    <message>
        <source>A photo that records its own time zone keeps it; the correction is added to every photo of the camera. Changes apply at once and are kept for the camera&apos;s next photos.</source>
        <translation>Ein Foto, das seine eigene Zeitzone aufzeichnet, behält sie; die Korrektur wird zu jedem Foto der Kamera addiert. Änderungen gelten sofort und bleiben für die nächsten Fotos der Kamera erhalten.</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Unknown camera</source>
        <translation>Unbekannte Kamera</translation>
    </message>
    <message>
        <source>This computer&apos;s zone</source>
        <translation>Zone dieses Computers</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time zone known here. Choose one from the list, or type an offset such as UTC+05:30.</source>
        <translation>„%1“ ist hier keine bekannte Zeitzone. Wählen Sie eine aus der Liste oder geben Sie einen Versatz wie UTC+05:30 ein.</translation>
    </message>
    <message>
        <source>Can&apos;t read the correction &quot;%1&quot;. Type it as +00:03:00 (hours, minutes, seconds) or -1d 02:00:00 (with days).</source>
        <translation>Die Korrektur „%1“ ist nicht lesbar. Geben Sie sie als +00:03:00 (Stunden, Minuten, Sekunden) oder -1d 02:00:00 (mit Tagen) ein.</translation>
    </message>
    <message>
        <source>A correction of more than ten years is refused.</source>
        <translation>Eine Korrektur von mehr als zehn Jahren wird abgelehnt.</translation>
    </message>
    <message>
        <source>Reference photo</source>
        <translation>Referenzfoto</translation>
    </message>
    <message>
        <source>Choose a photo of %1 that shows a clock, such as a GPS device&apos;s or a phone&apos;s screen.</source>
        <translation>Wählen Sie ein Foto von %1, das eine Uhr zeigt, etwa den Bildschirm eines GPS-Geräts oder eines Telefons.</translation>
    </message>
    <message>
        <source>Type the time that %1 shows, as a clock in the camera&apos;s time zone (%2). The field starts with the time the camera recorded.</source>
        <translation>Geben Sie die Zeit ein, die %1 zeigt, als Uhrzeit in der Zeitzone der Kamera (%2). Das Feld beginnt mit der Zeit, die die Kamera aufgezeichnet hat.</translation>
    </message>
    <message>
        <source>Can&apos;t read the time &quot;%1&quot;. Type it as 2021-06-01 14:03:00, or 14:03:00 for the photo&apos;s day.</source>
        <translation>Die Zeit „%1“ ist nicht lesbar. Geben Sie sie als 2021-06-01 14:03:00 ein, oder als 14:03:00 für den Tag des Fotos.</translation>
    </message>
</context>
<context>
    <name>dialog_settings</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
</context>
<context>
    <name>dialog_write_result</name>
    <message>
        <source>Not all files were written back</source>
        <translation>Nicht alle Dateien wurden zurückgeschrieben</translation>
    </message>
    <message>
        <source>Not all files were written</source>
        <translation>Nicht alle Dateien wurden geschrieben</translation>
    </message>
    <message>
        <source>Copy list</source>
        <translation>Liste kopieren</translation>
    </message>
    <message>
        <source>Copy the files and their reasons to the clipboard</source>
        <translation>Die Dateien mit ihren Gründen in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>Written back: %1</source>
        <translation>Zurückgeschrieben: %1</translation>
    </message>
    <message>
        <source>Written: %1</source>
        <translation>Geschrieben: %1</translation>
    </message>
    <message>
        <source>Left alone, with a position of their own: %1</source>
        <translation>Unverändert, mit eigener Position: %1</translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <translation>Fehlgeschlagen: %1</translation>
    </message>
</context>
<context>
    <name>gps_writer</name>
    <message>
        <source>can&apos;t remove it</source>
        <translation>sie lässt sich nicht entfernen</translation>
    </message>
    <message>
        <source>a write was cut off and ExifTool left &apos;%1&apos; beside the photo; both were kept: please check the photo</source>
        <translation>ein Schreibvorgang wurde abgebrochen und ExifTool hat „%1“ neben dem Foto hinterlassen; beide wurden behalten: bitte das Foto prüfen</translation>
    </message>
    <message>
        <source>the position can&apos;t be written: %1</source>
        <translation>die Position lässt sich nicht schreiben: %1</translation>
    </message>
    <message>
        <source>ExifTool&apos;s temporary file &apos;%1&apos; is in the way, left by an earlier write that was cut off</source>
        <translation>ExifTools temporäre Datei „%1“ ist im Weg, übrig von einem früheren, abgebrochenen Schreibvorgang</translation>
    </message>
    <message>
        <source>(entry %1 of the undo record)</source>
        <translation>(Eintrag %1 der Aufzeichnung)</translation>
    </message>
    <message>
        <source>its entry can&apos;t be read; nothing was written</source>
        <translation>sein Eintrag ist nicht lesbar; nichts wurde geschrieben</translation>
    </message>
    <message>
        <source>changed since the write (by another program?); left as it is</source>
        <translation>seit dem Schreiben verändert (von einem anderen Programm?); so belassen</translation>
    </message>
</context>
<context>
    <name>gpx_parser</name>
    <message>
        <source>Waypoints</source>
        <translation>Wegpunkte</translation>
    </message>
    <message>
        <source>The file can&apos;t be opened: %1</source>
        <translation>Die Datei lässt sich nicht öffnen: %1</translation>
    </message>
    <message>
        <source>The file can&apos;t be read: %1</source>
        <translation>Die Datei lässt sich nicht lesen: %1</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>Line %1: A control character, which XML doesn&apos;t allow.</source>
        <translation>Zeile %1: Ein Steuerzeichen, das XML nicht erlaubt.</translation>
    </message>
</context>
<context>
    <name>map_window</name>
    <message>
        <source>Map</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>OpenStreetMap</source>
        <translation>OpenStreetMap</translation>
    </message>
    <message>
        <source>Plain map (offline)</source>
        <translation>Einfache Karte (offline)</translation>
    </message>
    <message>
        <source>OpenStreetMap downloads its tiles when the computer is online; the plain map needs no network</source>
        <translation>OpenStreetMap lädt seine Kacheln, wenn der Computer online ist; die einfache Karte braucht kein Netz</translation>
    </message>
    <message>
        <source>© OpenStreetMap contributors</source>
        <translation>© OpenStreetMap-Mitwirkende</translation>
    </message>
    <message>
        <source>Marble&apos;s map data is missing (%1 in %2).</source>
        <translation>Die Kartendaten von Marble fehlen (%1 in %2).</translation>
    </message>
    <message>
        <source>Marble&apos;s plugins are missing (%1 in %2).</source>
        <translation>Die Plugins von Marble fehlen (%1 in %2).</translation>
    </message>
    <message>
        <source>Own position: %1</source>
        <translation>Eigene Position: %1</translation>
    </message>
    <message>
        <source>From a photo: %1</source>
        <translation>Von einem Foto: %1</translation>
    </message>
    <message>
        <source>From the track: %1</source>
        <translation>Vom Track: %1</translation>
    </message>
    <message>
        <source>Typed: %1</source>
        <translation>Eingegeben: %1</translation>
    </message>
    <message>
        <source>No position: %1</source>
        <translation>Ohne Position: %1</translation>
    </message>
    <message>
        <source>GPS data to be removed: %1</source>
        <translation>GPS-Daten werden entfernt: %1</translation>
    </message>
    <message>
        <source>Position out of range: %1</source>
        <translation>Position außerhalb des Bereichs: %1</translation>
    </message>
    <message>
        <source>Own position</source>
        <translation>Eigene Position</translation>
    </message>
    <message>
        <source>From the photo above: %1</source>
        <translation>Vom Foto darüber: %1</translation>
    </message>
    <message>
        <source>From the photo below: %1</source>
        <translation>Vom Foto darunter: %1</translation>
    </message>
    <message>
        <source>From the GPX track</source>
        <translation>Vom GPX-Track</translation>
    </message>
    <message>
        <source>Typed position</source>
        <translation>Eingegebene Position</translation>
    </message>
    <message>
        <source>Use this position</source>
        <translation>Diese Position verwenden</translation>
    </message>
    <message>
        <source>Show all photos and tracks</source>
        <translation>Alle Fotos und Tracks zeigen</translation>
    </message>
    <message>
        <source>More photos here: %1</source>
        <translation>Weitere Fotos hier: %1</translation>
    </message>
</context>
<context>
    <name>table_data_model</name>
    <message>
        <source>Photo</source>
        <translation>Foto</translation>
    </message>
    <message>
        <source>Recording Date</source>
        <translation>Aufnahmedatum</translation>
    </message>
    <message>
        <source>GPS Tag</source>
        <translation>GPS-Tag</translation>
    </message>
    <message>
        <source>Clear GPS data</source>
        <translation>GPS-Daten löschen</translation>
    </message>
    <message>
        <source>Read in the camera&apos;s time zone %1</source>
        <translation>In der Zeitzone der Kamera gelesen: %1</translation>
    </message>
    <message>
        <source>Recorded %1, corrected by %2</source>
        <translation>Aufgezeichnet %1, korrigiert um %2</translation>
    </message>
</context>
<context>
    <name>track_converter</name>
    <message>
        <source>GPSBabel, which reads every track format but GPX, isn&apos;t installed.</source>
        <translation>GPSBabel, das alle Track-Formate außer GPX liest, ist nicht installiert.</translation>
    </message>
    <message>
        <source>GPSBabel could not be started: %1</source>
        <translation>GPSBabel konnte nicht gestartet werden: %1</translation>
    </message>
    <message>
        <source>GPSBabel did not finish within %1 seconds.</source>
        <translation>GPSBabel ist nicht innerhalb von %1 Sekunden fertig geworden.</translation>
    </message>
    <message>
        <source>GPSBabel failed with exit code %1.</source>
        <translation>GPSBabel ist mit dem Exit-Code %1 gescheitert.</translation>
    </message>
</context>
<context>
    <name>track_loader</name>
    <message>
        <source>The KMZ archive can&apos;t be read: %1</source>
        <translation>Das KMZ-Archiv lässt sich nicht lesen: %1</translation>
    </message>
    <message>
        <source>The KMZ archive holds no KML file.</source>
        <translation>Das KMZ-Archiv enthält keine KML-Datei.</translation>
    </message>
    <message>
        <source>The KMZ archive can&apos;t be unpacked: %1</source>
        <translation>Das KMZ-Archiv lässt sich nicht entpacken: %1</translation>
    </message>
    <message>
        <source>GPSBabel&apos;s GPX can&apos;t be read: %1</source>
        <translation>Das GPX von GPSBabel lässt sich nicht lesen: %1</translation>
    </message>
    <message>
        <source>It holds no track point.</source>
        <translation>Sie enthält keinen Trackpunkt.</translation>
    </message>
    <message>
        <source>GPSBabel read no track point from it.</source>
        <translation>GPSBabel hat keinen Trackpunkt daraus gelesen.</translation>
    </message>
    <message>
        <source>None of its track points has a time. KML keeps times only in tracks written as gx:Track.</source>
        <translation>Keiner ihrer Trackpunkte hat eine Zeit. KML enthält Zeiten nur in Tracks, die als gx:Track geschrieben sind.</translation>
    </message>
    <message>
        <source>None of its track points has a time.</source>
        <translation>Keiner ihrer Trackpunkte hat eine Zeit.</translation>
    </message>
    <message>
        <source>All its track points have the same time, %1: the clock didn&apos;t run.</source>
        <translation>Alle ihre Trackpunkte haben dieselbe Zeit, %1: Die Uhr lief nicht.</translation>
    </message>
    <message>
        <source>The file can&apos;t be opened: %1</source>
        <translation>Die Datei lässt sich nicht öffnen: %1</translation>
    </message>
    <message>
        <source>This isn&apos;t a kind of track file that Loxmere reads: GPX, KML, KMZ, FIT, TCX, IGC, NMEA, CSV or PLT.</source>
        <translation>Diese Art von Track-Datei liest Loxmere nicht. Es liest GPX, KML, KMZ, FIT, TCX, IGC, NMEA, CSV und PLT.</translation>
    </message>
    <message>
        <source>No temporary folder for the conversion: %1</source>
        <translation>Kein temporärer Ordner für die Umwandlung: %1</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>write_journal</name>
    <message>
        <source>it isn&apos;t an undo record of Loxmere</source>
        <translation>sie ist keine Aufzeichnung von Loxmere</translation>
    </message>
    <message>
        <source>its first line is damaged</source>
        <translation>ihre erste Zeile ist beschädigt</translation>
    </message>
    <message>
        <source>it was written by a newer version of Loxmere (format %1)</source>
        <translation>sie stammt von einer neueren Version von Loxmere (Format %1)</translation>
    </message>
    <message>
        <source>its header is damaged</source>
        <translation>ihr Kopf ist beschädigt</translation>
    </message>
    <message>
        <source>line %1 can&apos;t be read</source>
        <translation>Zeile %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>files whose entries are missing or damaged, not to be undone: %1 of %2</source>
        <translation>Dateien mit fehlenden oder beschädigten Einträgen, nicht rückgängig zu machen: %1 von %2</translation>
    </message>
    <message>
        <source>can&apos;t make the folder %1</source>
        <translation>der Ordner %1 lässt sich nicht anlegen</translation>
    </message>
</context>
</TS>
