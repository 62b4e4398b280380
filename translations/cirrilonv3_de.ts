<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AddressEdit</name>
    <message>
        <source>Test</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>Test the address: %1</source>
        <translation>Adresse testen: %1</translation>
    </message>
    <message>
        <source>An address begins with http:// or https:// and the name of a server.</source>
        <translation>Eine Adresse beginnt mit http:// oder https:// und dem Namen eines Servers.</translation>
    </message>
    <message>
        <source>Now: %1</source>
        <translation>Jetzt: %1</translation>
    </message>
    <message>
        <source>Testing...</source>
        <translation>Test läuft...</translation>
    </message>
</context>
<context>
    <name>AirportListModel</name>
    <message>
        <source>An ICAO code has three or four letters or digits.</source>
        <translation>Ein ICAO-Code hat drei oder vier Buchstaben oder Ziffern.</translation>
    </message>
    <message>
        <source>Another row has this ICAO code.</source>
        <translation>Eine andere Zeile hat diesen ICAO-Code.</translation>
    </message>
    <message>
        <source>The old and the new ICAO code are the same.</source>
        <translation>Der alte und der neue ICAO-Code sind gleich.</translation>
    </message>
    <message>
        <source>A name or country can not hold &quot;;&quot; or line breaks.</source>
        <translation>Name und Land dürfen weder &quot;;&quot; noch Zeilenumbrüche enthalten.</translation>
    </message>
    <message>
        <source>An elevation is a number from -2000 to 30000 feet.</source>
        <translation>Die Platzhöhe ist eine Zahl von -2000 bis 30000 Fuß.</translation>
    </message>
    <message>
        <source>A latitude is a number from -90 to 90 degrees.</source>
        <translation>Die Breite ist eine Zahl von -90 bis 90 Grad.</translation>
    </message>
    <message>
        <source>A longitude is a number from -180 to 180 degrees.</source>
        <translation>Die Länge ist eine Zahl von -180 bis 180 Grad.</translation>
    </message>
    <message>
        <source>The position 0, 0 means unknown.</source>
        <translation>Die Position 0, 0 bedeutet unbekannt.</translation>
    </message>
    <message>
        <source>Old ICAO</source>
        <translation>Alter ICAO-Code</translation>
    </message>
    <message>
        <source>New ICAO</source>
        <translation>Neuer ICAO-Code</translation>
    </message>
    <message>
        <source>ICAO</source>
        <translation>ICAO</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Country</source>
        <translation>Land</translation>
    </message>
    <message>
        <source>Elevation (ft)</source>
        <translation>Platzhöhe (ft)</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Länge</translation>
    </message>
</context>
<context>
    <name>BackendBase</name>
    <message>
        <source>Shows or hides the log</source>
        <translation>Zeigt oder verbirgt das Protokoll</translation>
    </message>
    <message>
        <source>Shows or hides the flight planner</source>
        <translation>Zeigt oder verbirgt den Flugplaner</translation>
    </message>
    <message>
        <source>Shows or hides the data of aircraft and weather cycle</source>
        <translation>Zeigt oder verbirgt die Daten von Flugzeug und Wetterzyklus</translation>
    </message>
    <message>
        <source>Shows or hides the load editor</source>
        <translation>Zeigt oder verbirgt den Beladungseditor</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
</context>
<context>
    <name>BasicSettings</name>
    <message>
        <source>Basic settings</source>
        <translation>Grundeinstellungen</translation>
    </message>
    <message>
        <source>Welcome to Cirrilon</source>
        <translation>Willkommen bei Cirrilon</translation>
    </message>
    <message>
        <source>Cirrilon brings the real weather into your flight simulator.

The next pages ask how the simulator is reached, where the weather comes from and what is done at the start. Everything can be changed later in the settings.</source>
        <translation>Cirrilon bringt das echte Wetter in Ihren Flugsimulator.

Die nächsten Seiten fragen, wie der Simulator zu erreichen ist, woher das Wetter kommt und was beim Start geschieht. Alles lässt sich später in den Einstellungen ändern.</translation>
    </message>
    <message>
        <source>Simulator</source>
        <translation>Simulator</translation>
    </message>
    <message>
        <source>How the program reaches the simulator.</source>
        <translation>Wie das Programm den Simulator erreicht.</translation>
    </message>
    <message>
        <source>Folder of the simulator</source>
        <translation>Ordner des Simulators</translation>
    </message>
    <message>
        <source>Needed for a simulator on this computer that loads weather from files.</source>
        <translation>Nötig für einen Simulator auf diesem Rechner, der Wetter aus Dateien lädt.</translation>
    </message>
    <message>
        <source>Weather</source>
        <translation>Wetter</translation>
    </message>
    <message>
        <source>Where the reports come from.</source>
        <translation>Woher die Meldungen kommen.</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>&amp;Download the weather</source>
        <translation>&amp;Wetter herunterladen</translation>
    </message>
    <message>
        <source>C&amp;onnect to the simulator</source>
        <translation>&amp;Mit dem Simulator verbinden</translation>
    </message>
    <message>
        <source>Look for a new &amp;version</source>
        <translation>Nach einer neuen &amp;Version suchen</translation>
    </message>
    <message>
        <source>Connecting</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Start of the program</source>
        <translation>Start des Programms</translation>
    </message>
    <message>
        <source>What is done when the program starts.</source>
        <translation>Was beim Start des Programms geschieht.</translation>
    </message>
    <message>
        <source>Clear the &amp;simulator&apos;s weather</source>
        <translation>Wetter des Simulators &amp;löschen</translation>
    </message>
</context>
<context>
    <name>CirrilonView</name>
    <message>
        <source>Weather not loaded</source>
        <translation>Kein Wetter geladen</translation>
    </message>
    <message>
        <source>Loading GUI</source>
        <translation>Oberfläche wird geladen</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>The folder of the settings can&apos;t be made, so they are kept in %1.</source>
        <translation>Der Ordner der Einstellungen kann nicht angelegt werden, deshalb liegen sie in %1.</translation>
    </message>
    <message>
        <source>Save report for support</source>
        <translation>Bericht für den Support speichern</translation>
    </message>
    <message>
        <source>Text (*.txt)</source>
        <translation>Text (*.txt)</translation>
    </message>
    <message>
        <source>The report can&apos;t be written to %1: %2</source>
        <translation>Der Bericht kann nicht nach %1 geschrieben werden: %2</translation>
    </message>
</context>
<context>
    <name>ConnectionProbe</name>
    <message>
        <source>a METAR block with %1 reports</source>
        <translation>einem METAR-Block mit %1 Meldungen</translation>
    </message>
    <message>
        <source>a SYNOP block with %1 reports</source>
        <translation>einem SYNOP-Block mit %1 Meldungen</translation>
    </message>
    <message>
        <source>a TAF block with %1 reports</source>
        <translation>einem TAF-Block mit %1 Meldungen</translation>
    </message>
    <message>
        <source>It is a weather file with %1.</source>
        <translation>Es ist eine Wetterdatei mit %1.</translation>
    </message>
    <message>
        <source>It holds %1 METAR reports without block marks.</source>
        <translation>Sie enthält %1 METAR-Meldungen ohne Blockmarken.</translation>
    </message>
    <message>
        <source>No weather was recognised in it. It begins with: %1</source>
        <translation>Darin wurde kein Wetter erkannt. Der Anfang: %1</translation>
    </message>
    <message>
        <source>The connection was refused. Is the server running, and is the port right?</source>
        <translation>Die Verbindung wurde abgelehnt. Läuft der Server, und stimmt der Port?</translation>
    </message>
    <message>
        <source>The computer was not found. Check the address.</source>
        <translation>Der Rechner wurde nicht gefunden. Prüfen Sie die Adresse.</translation>
    </message>
    <message>
        <source>The server closed the connection without an answer.</source>
        <translation>Der Server hat die Verbindung ohne Antwort geschlossen.</translation>
    </message>
    <message>
        <source>It is empty.</source>
        <translation>Die Antwort ist leer.</translation>
    </message>
    <message>
        <source>It is a GRIB file.</source>
        <translation>Es ist eine GRIB-Datei.</translation>
    </message>
    <message>
        <source>It is a web page, not weather data.</source>
        <translation>Es ist eine Webseite, keine Wetterdaten.</translation>
    </message>
    <message>
        <source>It is gzip data that can&apos;t be read: %1.</source>
        <translation>Es sind gzip-Daten, die nicht lesbar sind: %1.</translation>
    </message>
    <message>
        <source>It is gzip data.</source>
        <translation>Es sind gzip-Daten.</translation>
    </message>
    <message>
        <source>No answer within %1 seconds.</source>
        <translation>Keine Antwort innerhalb von %1 Sekunden.</translation>
    </message>
    <message>
        <source>Something is listening there, but it gave no bridge answer within %1 seconds.</source>
        <translation>Dort nimmt ein Programm Verbindungen an, hat aber innerhalb von %1 Sekunden nicht wie ein Bridge-Server geantwortet.</translation>
    </message>
    <message>
        <source>This is no address that begins with http:// or https://.</source>
        <translation>Das ist keine Adresse, die mit http:// oder https:// beginnt.</translation>
    </message>
    <message>
        <source>The answer is larger than %1.</source>
        <translation>Die Antwort ist größer als %1.</translation>
    </message>
    <message>
        <source>The server can&apos;t be reached: %1</source>
        <translation>Der Server ist nicht erreichbar: %1</translation>
    </message>
    <message>
        <source>HTTP status %1, %2.</source>
        <translation>HTTP-Status %1, %2.</translation>
    </message>
    <message>
        <source>The server refuses: %1</source>
        <translation>Der Server lehnt ab: %1</translation>
    </message>
    <message>
        <source>Something answers at %1, but not as a bridge server does.</source>
        <translation>Unter %1 antwortet ein Programm, aber nicht wie ein Bridge-Server.</translation>
    </message>
    <message>
        <source>Please update the server or plug-in.</source>
        <translation>Bitte aktualisieren Sie den Server oder das Plug-in.</translation>
    </message>
    <message>
        <source>Please update Cirrilon.</source>
        <translation>Bitte aktualisieren Sie Cirrilon.</translation>
    </message>
    <message>
        <source>A server answers at %1, but its API version is %2 and %3 is needed.</source>
        <translation>Unter %1 antwortet ein Server, aber seine API-Version ist %2, benötigt wird %3.</translation>
    </message>
    <message>
        <source>Connected to %1, server API version %2.</source>
        <translation>Verbunden mit %1, API-Version des Servers %2.</translation>
    </message>
    <message>
        <source>The server has no simulator at the moment.</source>
        <translation>Der Server hat zurzeit keinen Simulator.</translation>
    </message>
    <message>
        <source>Simulator: %1, through %2.</source>
        <translation>Simulator: %1, über %2.</translation>
    </message>
</context>
<context>
    <name>Controller</name>
    <message>
        <source>Disconnect</source>
        <translation>Trennen</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Set WX</source>
        <translation>Wetter setzen</translation>
    </message>
    <message>
        <source>not connected</source>
        <translation>nicht verbunden</translation>
    </message>
    <message>
        <source>Download weather</source>
        <translation>Wetter wird heruntergeladen</translation>
    </message>
    <message>
        <source>wait for connection to FS</source>
        <translation>Warten auf Verbindung zum Simulator</translation>
    </message>
    <message>
        <source>Jobs: %1</source>
        <translation>Aufträge: %1</translation>
    </message>
    <message>
        <source>wait for connect</source>
        <translation>Warten auf Verbindung</translation>
    </message>
    <message>
        <source>Sim not ready</source>
        <translation>Simulator nicht bereit</translation>
    </message>
    <message>
        <source>No weather update in FS2020</source>
        <translation>Kein Wetter-Update in FS2020</translation>
    </message>
    <message>
        <source>Weather update in %1s / %2NM</source>
        <translation>Wetter-Update in %1s / %2NM</translation>
    </message>
    <message>
        <source>Weather download in %1min</source>
        <translation>Wetter-Download in %1min</translation>
    </message>
    <message>
        <source>Weather download in %1s</source>
        <translation>Wetter-Download in %1s</translation>
    </message>
    <message>
        <source>Weather update in %1s/%2NM</source>
        <translation>Wetter-Update in %1s/%2NM</translation>
    </message>
    <message>
        <source>No Update, Approach</source>
        <translation>Kein Update, Anflug</translation>
    </message>
    <message>
        <source>is not available for P3Dv4</source>
        <translation>ist für P3Dv4 nicht verfügbar</translation>
    </message>
    <message>
        <source>is not available for P3Dv5</source>
        <translation>ist für P3Dv5 nicht verfügbar</translation>
    </message>
    <message>
        <source>is not available for FS2020</source>
        <translation>ist für FS2020 nicht verfügbar</translation>
    </message>
    <message>
        <source>Cirrilon - Export Metar</source>
        <translation>Cirrilon – METAR-Export</translation>
    </message>
    <message>
        <source>Can not open file.
%1</source>
        <translation>Die Datei kann nicht geöffnet werden.
%1</translation>
    </message>
    <message>
        <source>No aircraft data come from the bridge by themselves, so they are asked for. Check &quot;Own IP address&quot; in the settings under Interface.</source>
        <translation>Von der Bridge kommen keine Flugzeugdaten von selbst, deshalb werden sie abgefragt. Prüfen Sie „Eigene IP-Adresse“ in den Einstellungen unter Schnittstelle.</translation>
    </message>
</context>
<context>
    <name>DebugBar</name>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>All lines</source>
        <translation>Alle Zeilen</translation>
    </message>
    <message>
        <source>Notifications</source>
        <translation>Hinweise</translation>
    </message>
    <message>
        <source>Warnings</source>
        <translation>Warnungen</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Shows lines of this level and above</source>
        <translation>Zeigt Zeilen ab dieser Stufe</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Stufe</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Looks for a text in the log (Ctrl+F)</source>
        <translation>Sucht einen Text im Protokoll (Strg+F)</translation>
    </message>
    <message>
        <source>Find previous</source>
        <translation>Vorherige Fundstelle</translation>
    </message>
    <message>
        <source>Find next</source>
        <translation>Nächste Fundstelle</translation>
    </message>
    <message>
        <source>Copy the selected lines, or all</source>
        <translation>Kopiert die ausgewählten Zeilen, sonst alle</translation>
    </message>
    <message>
        <source>Save report for support</source>
        <translation>Bericht für den Support speichern</translation>
    </message>
</context>
<context>
    <name>DirectWind</name>
    <message>
        <source>no DWC, XPlane weather file mode</source>
        <translation>keine DWC, X-Plane im Modus Wetterdatei</translation>
    </message>
    <message>
        <source>Real wind at this altitude: %1°/%2kt</source>
        <translation>Wirklicher Wind in dieser Höhe: %1°/%2kt</translation>
    </message>
    <message>
        <source>no DWC, SimConnect can&apos;t set a wind</source>
        <translation>keine DWC, SimConnect kann keinen Wind setzen</translation>
    </message>
    <message>
        <source>no DWC, no weather yet</source>
        <translation>keine DWC, noch kein Wetter</translation>
    </message>
    <message>
        <source>no DWC, no upper-air data</source>
        <translation>keine DWC, keine Höhendaten</translation>
    </message>
    <message>
        <source>no DWC, no reports near the aircraft</source>
        <translation>keine DWC, keine Meldungen in der Nähe des Flugzeugs</translation>
    </message>
    <message>
        <source>no DWC, the simulator refuses the wind (error %1)</source>
        <translation>keine DWC, der Simulator nimmt den Wind nicht an (Fehler %1)</translation>
    </message>
    <message>
        <source>Wind on the ground, upper-air data are ignored: %1°/%2kt</source>
        <translation>Wind am Boden, Höhendaten werden nicht verwendet: %1°/%2kt</translation>
    </message>
</context>
<context>
    <name>DlgAbout</name>
    <message>
        <source>public domain</source>
        <translation>gemeinfrei</translation>
    </message>
    <message>
        <source>Airports</source>
        <translation>Flugplätze</translation>
    </message>
    <message>
        <source>Stations</source>
        <translation>Stationen</translation>
    </message>
    <message>
        <source>Reports of the demonstration</source>
        <translation>Meldungen der Vorführung</translation>
    </message>
    <message>
        <source>NOAA, WMO exchange</source>
        <translation>NOAA, Datenaustausch der WMO</translation>
    </message>
    <message>
        <source>Upper air of the demonstration</source>
        <translation>Höhenwetter der Vorführung</translation>
    </message>
    <message>
        <source>Icons and drawings</source>
        <translation>Symbole und Zeichnungen</translation>
    </message>
    <message>
        <source>zlib licence</source>
        <translation>zlib-Lizenz</translation>
    </message>
    <message>
        <source>Real weather for flight simulators: Cirrilon fetches the reports of the world, composes the weather around your aircraft and brings it into the simulator. Not for real-world navigation.</source>
        <translation>Echtes Wetter für Flugsimulatoren: Cirrilon holt die Meldungen der ganzen Welt, stellt daraus das Wetter um Ihr Flugzeug zusammen und bringt es in den Simulator. Nicht für die wirkliche Navigation.</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>Daten</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Bibliotheken</translation>
    </message>
    <message>
        <source>About Cirrilon</source>
        <translation>Über Cirrilon</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
</context>
<context>
    <name>DlgAirportList</name>
    <message>
        <source>Close without saving the changes?</source>
        <translation>Schließen, ohne die Änderungen zu speichern?</translation>
    </message>
    <message>
        <source>Airport list</source>
        <translation>Flugplatzliste</translation>
    </message>
    <message>
        <source>Additional airports</source>
        <translation>Zusätzliche Flugplätze</translation>
    </message>
    <message>
        <source>Airports that the program doesn&apos;t know, in decimal degrees.</source>
        <translation>Flugplätze, die das Programm nicht kennt, in Dezimalgrad.</translation>
    </message>
    <message>
        <source>&amp;Additional airports</source>
        <translation>&amp;Zusätzliche Flugplätze</translation>
    </message>
    <message>
        <source>Renamed ICAO codes</source>
        <translation>Geänderte ICAO-Codes</translation>
    </message>
    <message>
        <source>Airports whose ICAO code has changed.</source>
        <translation>Flugplätze, deren ICAO-Code sich geändert hat.</translation>
    </message>
    <message>
        <source>Re&amp;named ICAO codes</source>
        <translation>&amp;Geänderte ICAO-Codes</translation>
    </message>
    <message>
        <source>A&amp;dd</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>Can not read %1: %2</source>
        <translation>%1 ist nicht lesbar: %2</translation>
    </message>
    <message>
        <source>%1: lines that can not be read and are kept as they are: %2</source>
        <translation>%1: Zeilen, die nicht lesbar sind und so bleiben, wie sie sind: %2</translation>
    </message>
    <message>
        <source>%1 could not be read, so it is not overwritten.</source>
        <translation>%1 war nicht lesbar und wird daher nicht überschrieben.</translation>
    </message>
    <message>
        <source>Can not write %1: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Row %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>Saved.</source>
        <translation>Gespeichert.</translation>
    </message>
</context>
<context>
    <name>DlgSettings</name>
    <message>
        <source>Work folder</source>
        <translation>Arbeitsordner</translation>
    </message>
    <message>
        <source>Move the files of the work folder?

From: %1
To: %2</source>
        <translation>Die Dateien des Arbeitsordners verschieben?

Von: %1
Nach: %2</translation>
    </message>
    <message>
        <source>&amp;Move the files</source>
        <translation>Dateien &amp;verschieben</translation>
    </message>
    <message>
        <source>&amp;Leave them there</source>
        <translation>Dort &amp;lassen</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Weather</source>
        <translation>Wetter</translation>
    </message>
    <message>
        <source>Servers</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>Interface</source>
        <translation>Schnittstelle</translation>
    </message>
    <message>
        <source>Folders</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Mitteilungen</translation>
    </message>
    <message>
        <source>Recorder</source>
        <translation>Rekorder</translation>
    </message>
    <message>
        <source>Units</source>
        <translation>Einheiten</translation>
    </message>
    <message>
        <source>Map</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>AIRAC</source>
        <translation>AIRAC</translation>
    </message>
    <message>
        <source>Logging</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>The work folder can not be made.</source>
        <translation>Der Arbeitsordner kann nicht angelegt werden.</translation>
    </message>
</context>
<context>
    <name>DlgUpdater</name>
    <message>
        <source>&amp;Download and install</source>
        <translation>&amp;Herunterladen und installieren</translation>
    </message>
    <message>
        <source>Open the download &amp;page</source>
        <translation>Download-&amp;Seite öffnen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>S&amp;päter</translation>
    </message>
    <message>
        <source>New version of Cirrilon</source>
        <translation>Neue Version von Cirrilon</translation>
    </message>
    <message>
        <source>The beta version %1 of Cirrilon is available.</source>
        <translation>Die Beta-Version %1 von Cirrilon ist verfügbar.</translation>
    </message>
    <message>
        <source>Version %1 of Cirrilon is available.</source>
        <translation>Version %1 von Cirrilon ist verfügbar.</translation>
    </message>
    <message>
        <source>You are using version %1.</source>
        <translation>Sie verwenden Version %1.</translation>
    </message>
    <message>
        <source>This version is no longer supported.</source>
        <translation>Diese Version wird nicht mehr unterstützt.</translation>
    </message>
    <message>
        <source>What is new</source>
        <translation>Was ist neu</translation>
    </message>
    <message>
        <source>There is no description.</source>
        <translation>Es gibt keine Beschreibung.</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Herunterladen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>The download was cancelled.</source>
        <translation>Das Herunterladen wurde abgebrochen.</translation>
    </message>
    <message>
        <source>The browser can&apos;t be opened. The address is %1</source>
        <translation>Der Browser lässt sich nicht öffnen. Die Adresse ist %1</translation>
    </message>
    <message>
        <source>The download failed: %1</source>
        <translation>Das Herunterladen ist fehlgeschlagen: %1</translation>
    </message>
</context>
<context>
    <name>DockWidgetData</name>
    <message>
        <source>%1 ft</source>
        <translation>%1 ft</translation>
    </message>
    <message>
        <source>%1 kt</source>
        <translation>%1 kt</translation>
    </message>
    <message>
        <source>%1 ft/min</source>
        <translation>%1 ft/min</translation>
    </message>
    <message>
        <source>%1 lbs</source>
        <translation>%1 lbs</translation>
    </message>
    <message>
        <source>%1 °C</source>
        <translation>%1 °C</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>Daten</translation>
    </message>
    <message>
        <source>Weather cycle</source>
        <translation>Wetterzyklus</translation>
    </message>
    <message>
        <source>Aircraft</source>
        <translation>Flugzeug</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>Motion</source>
        <translation>Bewegung</translation>
    </message>
    <message>
        <source>Air</source>
        <translation>Luft</translation>
    </message>
    <message>
        <source>Radios</source>
        <translation>Funk</translation>
    </message>
    <message>
        <source>Flight</source>
        <translation>Flug</translation>
    </message>
    <message>
        <source>Simulator and interface</source>
        <translation>Simulator und Schnittstelle</translation>
    </message>
    <message>
        <source>Next weather update</source>
        <translation>Nächstes Wetter-Update</translation>
    </message>
    <message>
        <source>Next weather download</source>
        <translation>Nächster Wetter-Download</translation>
    </message>
    <message>
        <source>Waiting jobs</source>
        <translation>Wartende Aufträge</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Flight status</source>
        <translation>Flugstatus</translation>
    </message>
    <message>
        <source>Flight time</source>
        <translation>Flugzeit</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Neu starten</translation>
    </message>
    <message>
        <source>Restarts the recorder; recording comes with a later version</source>
        <translation>Startet den Rekorder neu; das Aufzeichnen kommt mit einer späteren Version</translation>
    </message>
    <message>
        <source>Restart recorder</source>
        <translation>Rekorder neu starten</translation>
    </message>
    <message>
        <source>Wind set</source>
        <translation>Gesetzter Wind</translation>
    </message>
    <message>
        <source>Wind set by direct wind control</source>
        <translation>Von der direkten Windsteuerung gesetzter Wind</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Altitude</source>
        <translation>Höhe (MSL)</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe über Grund</translation>
    </message>
    <message>
        <source>Heading</source>
        <translation>Steuerkurs</translation>
    </message>
    <message>
        <source>Ground track</source>
        <translation>Kurs über Grund</translation>
    </message>
    <message>
        <source>Variation</source>
        <translation>Missweisung</translation>
    </message>
    <message>
        <source>TAS</source>
        <translation>TAS</translation>
    </message>
    <message>
        <source>Ground speed</source>
        <translation>Geschw. über Grund</translation>
    </message>
    <message>
        <source>Vertical speed</source>
        <translation>Steig-/Sinkrate</translation>
    </message>
    <message>
        <source>Weight</source>
        <translation>Gewicht</translation>
    </message>
    <message>
        <source>Wind</source>
        <translation>Wind</translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <source>Visibility</source>
        <translation>Sicht</translation>
    </message>
    <message>
        <source>Time (UTC)</source>
        <translation>Zeit (UTC)</translation>
    </message>
    <message>
        <source>COM 1</source>
        <translation>COM 1</translation>
    </message>
    <message>
        <source>COM 2</source>
        <translation>COM 2</translation>
    </message>
    <message>
        <source>NAV 1</source>
        <translation>NAV 1</translation>
    </message>
    <message>
        <source>NAV 2</source>
        <translation>NAV 2</translation>
    </message>
    <message>
        <source>ADF</source>
        <translation>ADF</translation>
    </message>
    <message>
        <source>Transponder</source>
        <translation>Transponder</translation>
    </message>
</context>
<context>
    <name>DockWidgetDebug</name>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Debug</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>What the program does. Links open folders.</source>
        <translation>Was das Programm tut. Verweise öffnen Ordner.</translation>
    </message>
</context>
<context>
    <name>DockWidgetLoadeditor</name>
    <message>
        <source>Load editor</source>
        <translation>Beladungseditor</translation>
    </message>
    <message>
        <source>The load editor comes with a later version.</source>
        <translation>Der Beladungseditor kommt mit einer späteren Version.</translation>
    </message>
</context>
<context>
    <name>FolderEdit</name>
    <message>
        <source>Choose a folder</source>
        <translation>Ordner wählen</translation>
    </message>
    <message>
        <source>Choose a folder: %1</source>
        <translation>Ordner wählen: %1</translation>
    </message>
    <message>
        <source>A folder is needed here.</source>
        <translation>Hier wird ein Ordner benötigt.</translation>
    </message>
    <message>
        <source>This folder does not exist.</source>
        <translation>Dieser Ordner existiert nicht.</translation>
    </message>
    <message>
        <source>Give the whole path of the folder.</source>
        <translation>Geben Sie den ganzen Pfad des Ordners an.</translation>
    </message>
    <message>
        <source>This folder can not be written to.</source>
        <translation>In diesen Ordner kann nicht geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>GribDownload</name>
    <message>
        <source>Download Grib</source>
        <translation>Höhenwetter wird geladen</translation>
    </message>
    <message>
        <source>Parse grib file</source>
        <translation>GRIB-Datei wird gelesen</translation>
    </message>
</context>
<context>
    <name>MainActions</name>
    <message>
        <source>&amp;Cirrilon</source>
        <translation>&amp;Cirrilon</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Windows</source>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Werkzeuge</translation>
    </message>
    <message>
        <source>&amp;Developer Tools</source>
        <translation>&amp;Entwicklerwerkzeuge</translation>
    </message>
    <message>
        <source>&amp;Info</source>
        <translation>&amp;Info</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Connects to the simulator, or ends the connection</source>
        <translation>Verbindet mit dem Simulator oder trennt die Verbindung</translation>
    </message>
    <message>
        <source>Download WX</source>
        <translation>Wetter herunterladen</translation>
    </message>
    <message>
        <source>Downloads the weather now</source>
        <translation>Lädt das Wetter jetzt herunter</translation>
    </message>
    <message>
        <source>Set WX</source>
        <translation>Wetter setzen</translation>
    </message>
    <message>
        <source>Set weather for Airport</source>
        <translation>Wetter für Flugplatz setzen</translation>
    </message>
    <message>
        <source>Clear WX</source>
        <translation>Wetter löschen</translation>
    </message>
    <message>
        <source>Clears the weather in the simulator</source>
        <translation>Löscht das Wetter im Simulator</translation>
    </message>
    <message>
        <source>Load WX</source>
        <translation>Wetter laden</translation>
    </message>
    <message>
        <source>Loads stored weather</source>
        <translation>Lädt gespeichertes Wetter</translation>
    </message>
    <message>
        <source>Save WX</source>
        <translation>Wetter speichern</translation>
    </message>
    <message>
        <source>Stores the present weather</source>
        <translation>Speichert das jetzige Wetter</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Opens the settings</source>
        <translation>Öffnet die Einstellungen</translation>
    </message>
    <message>
        <source>Basic Settings</source>
        <translation>Grundeinstellungen</translation>
    </message>
    <message>
        <source>The assistant opens by itself at the first start</source>
        <translation>Der Assistent öffnet sich beim ersten Start von selbst</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Ends the program</source>
        <translation>Beendet das Programm</translation>
    </message>
    <message>
        <source>Flightplanner</source>
        <translation>Flugplaner</translation>
    </message>
    <message>
        <source>Plans a flight with the downloaded winds</source>
        <translation>Plant einen Flug mit den heruntergeladenen Winden</translation>
    </message>
    <message>
        <source>Weather search</source>
        <translation>Wettersuche</translation>
    </message>
    <message>
        <source>Searches the world for weather</source>
        <translation>Sucht weltweit nach Wetter</translation>
    </message>
    <message>
        <source>Weather Events</source>
        <translation>Wetterereignisse</translation>
    </message>
    <message>
        <source>Shows recorded weather events</source>
        <translation>Zeigt aufgezeichnete Wetterereignisse</translation>
    </message>
    <message>
        <source>Flights</source>
        <translation>Flüge</translation>
    </message>
    <message>
        <source>Shows recorded flights</source>
        <translation>Zeigt aufgezeichnete Flüge</translation>
    </message>
    <message>
        <source>Airport List</source>
        <translation>Flugplatzliste</translation>
    </message>
    <message>
        <source>Adds airports and changed ICAO codes</source>
        <translation>Ergänzt Flugplätze und geänderte ICAO-Codes</translation>
    </message>
    <message>
        <source>Aircraft Editor</source>
        <translation>Flugzeugeditor</translation>
    </message>
    <message>
        <source>Edits the aircraft configurations</source>
        <translation>Bearbeitet die Flugzeugkonfigurationen</translation>
    </message>
    <message>
        <source>Download History WX</source>
        <translation>Historisches Wetter herunterladen</translation>
    </message>
    <message>
        <source>Downloads weather of the past</source>
        <translation>Lädt Wetter der Vergangenheit herunter</translation>
    </message>
    <message>
        <source>Open Configfile</source>
        <translation>Konfigurationsordner öffnen</translation>
    </message>
    <message>
        <source>Opens the work folder in the file browser</source>
        <translation>Öffnet den Arbeitsordner in der Dateiverwaltung</translation>
    </message>
    <message>
        <source>Show metar stations failed</source>
        <translation>Unbekannte METAR-Stationen zeigen</translation>
    </message>
    <message>
        <source>Lists METARs whose station isn&apos;t known</source>
        <translation>Listet METARs auf, deren Station nicht bekannt ist</translation>
    </message>
    <message>
        <source>Show synops stations failed</source>
        <translation>Unbekannte SYNOP-Stationen zeigen</translation>
    </message>
    <message>
        <source>Lists SYNOPs whose station isn&apos;t known</source>
        <translation>Listet SYNOPs auf, deren Station nicht bekannt ist</translation>
    </message>
    <message>
        <source>Test func</source>
        <translation>Testfunktion</translation>
    </message>
    <message>
        <source>Shows the weather radar</source>
        <translation>Zeigt das Wetterradar</translation>
    </message>
    <message>
        <source>test</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>Has no function</source>
        <translation>Ohne Funktion</translation>
    </message>
    <message>
        <source>Check new version</source>
        <translation>Nach neuer Version suchen</translation>
    </message>
    <message>
        <source>Asks the info server for a newer version</source>
        <translation>Fragt den Info-Server nach einer neueren Version</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>Version and licences</source>
        <translation>Version und Lizenzen</translation>
    </message>
    <message>
        <source>%1 (comes with a later version)</source>
        <translation>%1 (kommt mit einer späteren Version)</translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation>Trennen</translation>
    </message>
    <message>
        <source>Weather radar</source>
        <translation>Wetterradar</translation>
    </message>
    <message>
        <source>Shows the simulator&apos;s clouds around the aircraft</source>
        <translation>Zeigt die Wolken des Simulators um das Flugzeug</translation>
    </message>
</context>
<context>
    <name>MainToolBar</name>
    <message>
        <source>Tool bar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Profile</source>
        <translation>Profil</translation>
    </message>
    <message>
        <source>Settings of a profile; the empty entry is none</source>
        <translation>Einstellungen eines Profils; der leere Eintrag ist keines</translation>
    </message>
    <message>
        <source>Aircraft</source>
        <translation>Flugzeug</translation>
    </message>
    <message>
        <source>no aircraft</source>
        <translation>kein Flugzeug</translation>
    </message>
    <message>
        <source>The aircraft in the simulator</source>
        <translation>Das Flugzeug im Simulator</translation>
    </message>
    <message>
        <source>Open checklist</source>
        <translation>Checkliste öffnen</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
    <message>
        <source>Record flight</source>
        <translation>Flug aufzeichnen</translation>
    </message>
    <message>
        <source>Recording comes with a later version; the choice is kept</source>
        <translation>Das Aufzeichnen kommt mit einer späteren Version; die Wahl bleibt erhalten</translation>
    </message>
</context>
<context>
    <name>MainWidgetFlightplanner</name>
    <message>
        <source>Flightplanner</source>
        <translation>Flugplaner</translation>
    </message>
    <message>
        <source>The flight planner comes with a later version.</source>
        <translation>Der Flugplaner kommt mit einer späteren Version.</translation>
    </message>
</context>
<context>
    <name>MainWidgetWeather</name>
    <message>
        <source>Clear Content</source>
        <translation>Inhalt leeren</translation>
    </message>
    <message>
        <source>Copy Metar</source>
        <translation>METAR kopieren</translation>
    </message>
    <message>
        <source>New metar window on top</source>
        <translation>Neues METAR-Fenster im Vordergrund</translation>
    </message>
    <message>
        <source>ICAO code</source>
        <translation>ICAO-Code</translation>
    </message>
    <message>
        <source>e.g. EDDF</source>
        <translation>z. B. EDDF</translation>
    </message>
    <message>
        <source>Airport whose weather is shown; Return searches</source>
        <translation>Flugplatz, dessen Wetter gezeigt wird; die Eingabetaste sucht</translation>
    </message>
    <message>
        <source>Get Metar</source>
        <translation>METAR holen</translation>
    </message>
    <message>
        <source>Usable as soon as weather is loaded</source>
        <translation>Verwendbar, sobald Wetter geladen ist</translation>
    </message>
    <message>
        <source>Time of the weather</source>
        <translation>Zeit des Wetters</translation>
    </message>
    <message>
        <source>Reports</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Upper air</source>
        <translation>Höhenwetter</translation>
    </message>
    <message>
        <source>ICA&amp;O</source>
        <translation>ICA&amp;O</translation>
    </message>
</context>
<context>
    <name>NoticeBar</name>
    <message>
        <source>Notices</source>
        <translation>Hinweise</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
</context>
<context>
    <name>PlaceTables</name>
    <message>
        <source>Loading Airport resource</source>
        <translation>Flugplätze werden geladen</translation>
    </message>
    <message>
        <source>Loading Weather station resource</source>
        <translation>Wetterstationen werden geladen</translation>
    </message>
</context>
<context>
    <name>PreparedWeather</name>
    <message>
        <source>update weather in FS</source>
        <translation>Wetter wird im Simulator aktualisiert</translation>
    </message>
    <message>
        <source>The weather theme can&apos;t be written. Check the simulator&apos;s folder in the settings.</source>
        <translation>Die Wetterdatei lässt sich nicht schreiben. Bitte den Ordner des Simulators in den Einstellungen prüfen.</translation>
    </message>
    <message>
        <source>The weather can&apos;t be prepared (error %1).</source>
        <translation>Das Wetter lässt sich nicht vorbereiten (Fehler %1).</translation>
    </message>
    <message>
        <source>The connected simulator takes no weather from this version.</source>
        <translation>Der verbundene Simulator nimmt von dieser Version kein Wetter an.</translation>
    </message>
    <message>
        <source>No weather is set: there is no station in range.</source>
        <translation>Es wird kein Wetter gesetzt: Keine Station ist in Reichweite.</translation>
    </message>
    <message>
        <source>The simulator hasn&apos;t taken the weather (error %1).</source>
        <translation>Der Simulator hat das Wetter nicht angenommen (Fehler %1).</translation>
    </message>
    <message>
        <source>The weather can&apos;t be written: %1. Check the simulator&apos;s folder in the settings.</source>
        <translation>Das Wetter lässt sich nicht schreiben: %1. Bitte den Ordner des Simulators in den Einstellungen prüfen.</translation>
    </message>
</context>
<context>
    <name>ProgressBar</name>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>SettingsPageGeneral</name>
    <message>
        <source>Work folder</source>
        <translation>Arbeitsordner</translation>
    </message>
    <message>
        <source>&amp;Folder:</source>
        <translation>&amp;Ordner:</translation>
    </message>
    <message>
        <source>Profiles, saved weather, charts and the log are kept here. A change takes full effect at the next start.</source>
        <translation>Hier liegen Profile, gespeichertes Wetter, Karten und das Protokoll. Eine Änderung wirkt vollständig erst beim nächsten Start.</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>&amp;Restore the window&apos;s place and size</source>
        <translation>Ort und Größe des &amp;Fensters wiederherstellen</translation>
    </message>
    <message>
        <source>&amp;Download the weather</source>
        <translation>&amp;Wetter herunterladen</translation>
    </message>
    <message>
        <source>C&amp;onnect to the simulator</source>
        <translation>&amp;Mit dem Simulator verbinden</translation>
    </message>
    <message>
        <source>Look for a new &amp;version</source>
        <translation>Nach einer neuen &amp;Version suchen</translation>
    </message>
    <message>
        <source>Offer &amp;beta versions as well</source>
        <translation>Auch &amp;Beta-Versionen anbieten</translation>
    </message>
    <message>
        <source>Connecting</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Profile</source>
        <translation>Profil</translation>
    </message>
    <message>
        <source>&amp;New...</source>
        <translation>&amp;Neu...</translation>
    </message>
    <message>
        <source>New profile</source>
        <translation>Neues Profil</translation>
    </message>
    <message>
        <source>&amp;Profile:</source>
        <translation>&amp;Profil:</translation>
    </message>
    <message>
        <source>A profile keeps its own weather, interface and path options. What is changed in this window is kept in the profile used so far; then the chosen one is loaded. A new profile begins with the present options.</source>
        <translation>Ein Profil hat seine eigenen Optionen für Wetter, Schnittstelle und Pfade. Was in diesem Fenster geändert wird, bleibt im bisherigen Profil; danach wird das gewählte geladen. Ein neues Profil beginnt mit den jetzigen Optionen.</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>(keines)</translation>
    </message>
    <message>
        <source>A name has letters, digits, blanks, &quot;-&quot; and &quot;_&quot;, at most %1.</source>
        <translation>Ein Name hat Buchstaben, Ziffern, Leerzeichen, &quot;-&quot; und &quot;_&quot;, höchstens %1.</translation>
    </message>
    <message>
        <source>This name belongs to the main settings.</source>
        <translation>Dieser Name gehört den Haupteinstellungen.</translation>
    </message>
    <message>
        <source>A profile of this name exists.</source>
        <translation>Ein Profil dieses Namens gibt es schon.</translation>
    </message>
    <message>
        <source>Name of the profile:</source>
        <translation>Name des Profils:</translation>
    </message>
    <message>
        <source>&amp;Clear the simulator&apos;s weather</source>
        <translation>Wetter des Simulators &amp;löschen</translation>
    </message>
</context>
<context>
    <name>SettingsPageInterface</name>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>FSUIPC and SimConnect</source>
        <translation>FSUIPC und SimConnect</translation>
    </message>
    <message>
        <source>Bridge or X-Plane plug-in (network)</source>
        <translation>Bridge oder X-Plane-Plug-in (Netzwerk)</translation>
    </message>
    <message>
        <source>Interface</source>
        <translation>Schnittstelle</translation>
    </message>
    <message>
        <source>&amp;Interface:</source>
        <translation>&amp;Schnittstelle:</translation>
    </message>
    <message>
        <source>Bridge server</source>
        <translation>Bridge-Server</translation>
    </message>
    <message>
        <source>&amp;Server&apos;s IP address:</source>
        <translation>&amp;IP-Adresse des Servers:</translation>
    </message>
    <message>
        <source>The server&apos;s address is no IP address.</source>
        <translation>Die Adresse des Servers ist keine IP-Adresse.</translation>
    </message>
    <message>
        <source>&amp;Port:</source>
        <translation>&amp;Port:</translation>
    </message>
    <message>
        <source>Own IP address</source>
        <translation>Eigene IP-Adresse</translation>
    </message>
    <message>
        <source>&amp;Own IP address:</source>
        <translation>&amp;Eigene IP-Adresse:</translation>
    </message>
    <message>
        <source>The own address is no IP address.</source>
        <translation>Die eigene Adresse ist keine IP-Adresse.</translation>
    </message>
    <message>
        <source>The server sends the aircraft&apos;s data to the own address. Without one the data is asked for.</source>
        <translation>Der Server sendet die Daten des Flugzeugs an die eigene Adresse. Ohne sie werden die Daten abgefragt.</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>&amp;Test the connection</source>
        <translation>Verbindung &amp;testen</translation>
    </message>
    <message>
        <source>Reading the aircraft&apos;s data</source>
        <translation>Lesen der Flugzeugdaten</translation>
    </message>
    <message>
        <source>ms</source>
        <comment>milliseconds</comment>
        <translation>ms</translation>
    </message>
    <message>
        <source>Near the &amp;ground, every:</source>
        <translation>In &amp;Bodennähe alle:</translation>
    </message>
    <message>
        <source>Ot&amp;herwise, every:</source>
        <translation>S&amp;onst alle:</translation>
    </message>
    <message>
        <source>Near the ground the data is read more often than otherwise.</source>
        <translation>In Bodennähe werden die Daten öfter gelesen als sonst.</translation>
    </message>
    <message>
        <source>Testing...</source>
        <translation>Test läuft...</translation>
    </message>
    <message>
        <source>This interface is tried when connecting; the log tells what was found. Only the bridge can be tested here.</source>
        <translation>Diese Schnittstelle wird beim Verbinden versucht; das Protokoll sagt, was gefunden wurde. Nur die Bridge lässt sich hier testen.</translation>
    </message>
    <message>
        <source>The server can&apos;t send to %1. This computer reaches it by %2, which is used instead.</source>
        <translation>Der Server kann nicht an %1 senden. Dieser Rechner erreicht ihn über %2, das stattdessen verwendet wird.</translation>
    </message>
</context>
<context>
    <name>SettingsPageServers</name>
    <message>
        <source>Reports</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>&amp;Source:</source>
        <translation>&amp;Quelle:</translation>
    </message>
    <message>
        <source>Ser&amp;ver:</source>
        <translation>Ser&amp;ver:</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>First server</source>
        <translation>Erster Server</translation>
    </message>
    <message>
        <source>Second server</source>
        <translation>Zweiter Server</translation>
    </message>
    <message>
        <source>External addresses</source>
        <translation>Externe Adressen</translation>
    </message>
    <message>
        <source>Weather servers</source>
        <translation>Wetterserver</translation>
    </message>
    <message>
        <source>&amp;First server:</source>
        <translation>&amp;Erster Server:</translation>
    </message>
    <message>
        <source>S&amp;econd server:</source>
        <translation>Zweite&amp;r Server:</translation>
    </message>
    <message>
        <source>The test fetches the list of the chosen source. The addresses are set by the keys url/wxdata1 and url/wxdata2 of the settings file.</source>
        <translation>Der Test holt die Liste der gewählten Quelle. Die Adressen stehen unter den Schlüsseln url/wxdata1 und url/wxdata2 der Einstellungsdatei.</translation>
    </message>
    <message>
        <source>&amp;METAR:</source>
        <translation>&amp;METAR:</translation>
    </message>
    <message>
        <source>S&amp;YNOP:</source>
        <translation>S&amp;YNOP:</translation>
    </message>
    <message>
        <source>&amp;Upper air (GRIB):</source>
        <translation>&amp;Höhenwetter (GRIB):</translation>
    </message>
    <message>
        <source>The present UTC date and time stand for: %d day, %m month, %Y year, %y year of two digits, %h hour, %i minute, %s second.</source>
        <translation>Für UTC-Datum und -Zeit von jetzt stehen: %d Tag, %m Monat, %Y Jahr, %y Jahr mit zwei Ziffern, %h Stunde, %i Minute, %s Sekunde.</translation>
    </message>
    <message>
        <source>If there is a SYNOP address, only its reports are used. Upper-air files need the program wgrib2.</source>
        <translation>Mit einer SYNOP-Adresse werden nur deren Meldungen verwendet. Dateien mit Höhenwetter brauchen das Programm wgrib2.</translation>
    </message>
    <message>
        <source>The external server needs a METAR or a SYNOP address.</source>
        <translation>Der externe Server braucht eine METAR- oder eine SYNOP-Adresse.</translation>
    </message>
</context>
<context>
    <name>SettingsPageWeather</name>
    <message>
        <source>Updates</source>
        <translation>Aktualisierung</translation>
    </message>
    <message>
        <source>s</source>
        <comment>seconds</comment>
        <translation>s</translation>
    </message>
    <message>
        <source>&amp;Set the weather every:</source>
        <translation>&amp;Wetter setzen alle:</translation>
    </message>
    <message>
        <source>&amp;Download every:</source>
        <translation>&amp;Herunterladen alle:</translation>
    </message>
    <message>
        <source>&amp;Range of stations:</source>
        <translation>&amp;Umkreis der Stationen:</translation>
    </message>
    <message>
        <source>NM</source>
        <translation>NM</translation>
    </message>
    <message>
        <source>&amp;Mode:</source>
        <translation>&amp;Modus:</translation>
    </message>
    <message>
        <source>Direct</source>
        <translation>Direkt</translation>
    </message>
    <message>
        <source>Weather file</source>
        <translation>Wetterdatei</translation>
    </message>
    <message>
        <source>The weather is also set after half of the range has been flown.</source>
        <translation>Das Wetter wird auch gesetzt, wenn der halbe Umkreis durchflogen ist.</translation>
    </message>
    <message>
        <source>No update in a&amp;pproach</source>
        <translation>Keine Aktualisierung im &amp;Anflug</translation>
    </message>
    <message>
        <source>Leave out S&amp;YNOP reports</source>
        <translation>S&amp;YNOP-Meldungen weglassen</translation>
    </message>
    <message>
        <source>Wind</source>
        <translation>Wind</translation>
    </message>
    <message>
        <source>Direct &amp;wind control</source>
        <translation>D&amp;irekte Windsteuerung</translation>
    </message>
    <message>
        <source>&amp;Turn at most:</source>
        <translation>D&amp;rehung höchstens:</translation>
    </message>
    <message>
        <source>C&amp;hange at most:</source>
        <translation>Ä&amp;nderung höchstens:</translation>
    </message>
    <message>
        <source>Visibility</source>
        <translation>Sicht</translation>
    </message>
    <message>
        <source>m</source>
        <comment>metres</comment>
        <translation>m</translation>
    </message>
    <message>
        <source>&amp;For 9999 or 10SM:</source>
        <translation>&amp;Für 9999 oder 10SM:</translation>
    </message>
    <message>
        <source>&amp;Lowest:</source>
        <translation>Kl&amp;einste:</translation>
    </message>
    <message>
        <source>Hi&amp;ghest (m):</source>
        <translation>&amp;Größte (m):</translation>
    </message>
    <message>
        <source>unlimited</source>
        <translation>unbegrenzt</translation>
    </message>
    <message>
        <source>The lowest visibility is above the highest one.</source>
        <translation>Die kleinste Sicht ist größer als die größte.</translation>
    </message>
    <message>
        <source>Clouds with CAVOK</source>
        <translation>Wolken bei CAVOK</translation>
    </message>
    <message>
        <source>no cloud</source>
        <translation>keine Wolken</translation>
    </message>
    <message>
        <source>random</source>
        <translation>zufällig</translation>
    </message>
    <message>
        <source>C&amp;over:</source>
        <translation>Bede&amp;ckung:</translation>
    </message>
    <message>
        <source>Clouds</source>
        <translation>Wolken</translation>
    </message>
    <message>
        <source>Tur&amp;bulence around cumulus</source>
        <translation>Turbulen&amp;z um Kumuluswolken</translation>
    </message>
    <message>
        <source>&amp;Icing</source>
        <translation>&amp;Vereisung</translation>
    </message>
    <message>
        <source>Strat&amp;us as fog</source>
        <translation>&amp;Stratus als Nebel</translation>
    </message>
    <message>
        <source>Mi&amp;xed clouds</source>
        <translation>Gemischte Wo&amp;lken</translation>
    </message>
    <message>
        <source>&amp;Cirrus if none is reported</source>
        <translation>Zirrus, wenn &amp;keiner gemeldet ist</translation>
    </message>
    <message>
        <source>Lea&amp;ve out upper-air data</source>
        <translation>Höhenwetter&amp;daten weglassen</translation>
    </message>
    <message>
        <source>Gusts &amp;at the surface</source>
        <translation>&amp;Böen am Boden</translation>
    </message>
    <message>
        <source>H&amp;eight (ft):</source>
        <translation>Höhe (f&amp;t):</translation>
    </message>
    <message>
        <source>Direct wind control sets the wind at the aircraft once a second. It isn&apos;t available with SimConnect alone, Prepar3D from version 4 on and FS2020.</source>
        <translation>Die direkte Windsteuerung setzt einmal in der Sekunde den Wind am Flugzeug. Mit SimConnect allein, Prepar3D ab Version 4 und FS2020 ist sie nicht verfügbar.</translation>
    </message>
</context>
<context>
    <name>SettingsPagesPlain</name>
    <message>
        <source>Flight plans</source>
        <translation>Flugpläne</translation>
    </message>
    <message>
        <source>{FS} stands for the simulator&apos;s main folder.</source>
        <translation>{FS} steht für den Hauptordner des Simulators.</translation>
    </message>
    <message>
        <source>Flight plan database &amp;key:</source>
        <translation>S&amp;chlüssel der Flugplandatenbank:</translation>
    </message>
    <message>
        <source>Without a folder the simulator is taken to be on another computer.</source>
        <translation>Ohne Ordner gilt der Simulator als auf einem anderen Rechner.</translation>
    </message>
    <message>
        <source>It looks like the main folder of X-Plane.</source>
        <translation>Es sieht nach dem Hauptordner von X-Plane aus.</translation>
    </message>
    <message>
        <source>It looks like the main folder of FSX or Prepar3D.</source>
        <translation>Es sieht nach dem Hauptordner von FSX oder Prepar3D aus.</translation>
    </message>
    <message>
        <source>No simulator is recognised there. The main folder of X-Plane holds &quot;Output&quot; and &quot;Resources&quot;, that of FSX and Prepar3D &quot;SimObjects&quot; and &quot;Weather&quot;.</source>
        <translation>Dort ist kein Simulator zu erkennen. Der Hauptordner von X-Plane enthält &quot;Output&quot; und &quot;Resources&quot;, der von FSX und Prepar3D &quot;SimObjects&quot; und &quot;Weather&quot;.</translation>
    </message>
    <message>
        <source>Simulator</source>
        <translation>Simulator</translation>
    </message>
    <message>
        <source>&amp;Main folder:</source>
        <translation>&amp;Hauptordner:</translation>
    </message>
    <message>
        <source>Reports</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>&amp;Export METARs to:</source>
        <translation>METARs &amp;exportieren nach:</translation>
    </message>
    <message>
        <source>With a folder here all METARs are written to a file in it after each download.</source>
        <translation>Mit einem Ordner hier werden nach jedem Herunterladen alle METARs in eine Datei darin geschrieben.</translation>
    </message>
    <message>
        <source>In the simulator</source>
        <translation>Im Simulator</translation>
    </message>
    <message>
        <source>Show &amp;messages</source>
        <translation>&amp;Mitteilungen zeigen</translation>
    </message>
    <message>
        <source>&amp;For:</source>
        <translation>&amp;Für:</translation>
    </message>
    <message>
        <source>s</source>
        <comment>seconds</comment>
        <translation>s</translation>
    </message>
    <message>
        <source>In the window</source>
        <translation>Im Fenster</translation>
    </message>
    <message>
        <source>Show the &amp;TAF below a METAR</source>
        <translation>&amp;TAF unter einem METAR zeigen</translation>
    </message>
    <message>
        <source>System tray</source>
        <translation>Infobereich</translation>
    </message>
    <message>
        <source>M&amp;inimise to the tray</source>
        <translation>In den Infobereich m&amp;inimieren</translation>
    </message>
    <message>
        <source>Flight recorder</source>
        <translation>Flugrekorder</translation>
    </message>
    <message>
        <source>&amp;Record flights</source>
        <translation>Flüge &amp;aufzeichnen</translation>
    </message>
    <message>
        <source>&amp;Callsign:</source>
        <translation>&amp;Rufzeichen:</translation>
    </message>
    <message>
        <source>Use the &amp;simulator&apos;s time</source>
        <translation>Zeit des &amp;Simulators verwenden</translation>
    </message>
    <message>
        <source>&amp;User name:</source>
        <translation>&amp;Benutzername:</translation>
    </message>
    <message>
        <source>The recorder comes with a later version; its options are kept.</source>
        <translation>Der Rekorder kommt mit einer späteren Version; seine Optionen bleiben erhalten.</translation>
    </message>
    <message>
        <source>Units</source>
        <translation>Einheiten</translation>
    </message>
    <message>
        <source>&amp;Weight:</source>
        <translation>&amp;Gewicht:</translation>
    </message>
    <message>
        <source>pounds (lbs)</source>
        <translation>Pfund (lbs)</translation>
    </message>
    <message>
        <source>kilograms (kg)</source>
        <translation>Kilogramm (kg)</translation>
    </message>
    <message>
        <source>&amp;Volume:</source>
        <translation>&amp;Volumen:</translation>
    </message>
    <message>
        <source>gallons (gal)</source>
        <translation>Gallonen (gal)</translation>
    </message>
    <message>
        <source>litres (l)</source>
        <translation>Liter (l)</translation>
    </message>
    <message>
        <source>Map</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>&amp;Type:</source>
        <translation>&amp;Typ:</translation>
    </message>
    <message>
        <source>Built-in map</source>
        <translation>Eingebaute Karte</translation>
    </message>
    <message>
        <source>&amp;Follow the aircraft</source>
        <translation>Dem &amp;Flugzeug folgen</translation>
    </message>
    <message>
        <source>Show the &amp;wind</source>
        <translation>&amp;Wind zeigen</translation>
    </message>
    <message>
        <source>Show &amp;airports</source>
        <translation>Flug&amp;plätze zeigen</translation>
    </message>
    <message>
        <source>The maps come with a later version; their options are kept.</source>
        <translation>Die Karten kommen mit einer späteren Version; ihre Optionen bleiben erhalten.</translation>
    </message>
    <message>
        <source>Navigation data</source>
        <translation>Navigationsdaten</translation>
    </message>
    <message>
        <source>&amp;Use AIRAC data</source>
        <translation>AIRAC-Daten &amp;benutzen</translation>
    </message>
    <message>
        <source>P&amp;MDG folder:</source>
        <translation>P&amp;MDG-Ordner:</translation>
    </message>
    <message>
        <source>Carena&amp;do folder:</source>
        <translation>Carena&amp;do-Ordner:</translation>
    </message>
    <message>
        <source>Aeroso&amp;ft folder:</source>
        <translation>Aeroso&amp;ft-Ordner:</translation>
    </message>
    <message>
        <source>Keep the data in a data&amp;base</source>
        <translation>Daten in einer Datenba&amp;nk halten</translation>
    </message>
    <message>
        <source>AIRAC data comes with a later version; the options are kept.</source>
        <translation>AIRAC-Daten kommen mit einer späteren Version; die Optionen bleiben erhalten.</translation>
    </message>
    <message>
        <source>Debug output</source>
        <translation>Debug-Ausgabe</translation>
    </message>
    <message>
        <source>&amp;Show lines from level:</source>
        <translation>Zeilen ab &amp;Stufe zeigen:</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Debug</translation>
    </message>
    <message>
        <source>Notification</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>The log file in the work folder always holds all lines.</source>
        <translation>Die Protokolldatei im Arbeitsordner enthält immer alle Zeilen.</translation>
    </message>
    <message>
        <source>Show messages at the tr&amp;ay icon</source>
        <translation>Mitteilungen am S&amp;ymbol im Infobereich zeigen</translation>
    </message>
</context>
<context>
    <name>SettingsSaver</name>
    <message>
        <source>The settings in %1 can&apos;t be understood. The program goes on with its defaults; the file is kept as %2.</source>
        <translation>Die Einstellungen in %1 sind nicht lesbar. Das Programm läuft mit seinen Vorgaben weiter; die Datei bleibt als %2 erhalten.</translation>
    </message>
    <message>
        <source>The settings in %1 can&apos;t be understood. The program goes on with its defaults; the file can&apos;t be put aside, so changes aren&apos;t saved.</source>
        <translation>Die Einstellungen in %1 sind nicht lesbar. Das Programm läuft mit seinen Vorgaben weiter; die Datei kann nicht beiseitegelegt werden, deshalb werden Änderungen nicht gespeichert.</translation>
    </message>
    <message>
        <source>The settings can&apos;t be saved in %1. Look whether the folder may be written and the disk has room.</source>
        <translation>Die Einstellungen können nicht in %1 gespeichert werden. Prüfen Sie, ob der Ordner beschrieben werden darf und der Datenträger Platz hat.</translation>
    </message>
</context>
<context>
    <name>SimulatorLink</name>
    <message>
        <source>The bridge doesn&apos;t answer when weather is sent to it: the simulator may keep its old weather. Check the bridge, or start it again.</source>
        <translation>Die Bridge antwortet nicht, wenn ihr Wetter gesendet wird: Der Simulator behält vielleicht sein altes Wetter. Prüfen Sie die Bridge oder starten Sie sie neu.</translation>
    </message>
    <message>
        <source>The bridge is of another version. Update the bridge or Cirrilon.</source>
        <translation>Die Bridge hat eine andere Version. Aktualisieren Sie die Bridge oder Cirrilon.</translation>
    </message>
    <message>
        <source>The connection to the simulator is lost.</source>
        <translation>Die Verbindung zum Simulator ist verloren.</translation>
    </message>
    <message>
        <source>No simulator answers.</source>
        <translation>Kein Simulator antwortet.</translation>
    </message>
    <message>
        <source>Cirrilon then connects by itself.</source>
        <translation>Cirrilon verbindet sich dann von selbst.</translation>
    </message>
    <message>
        <source>Then press Connect.</source>
        <translation>Drücken Sie dann Verbinden.</translation>
    </message>
    <message>
        <source>Start the simulator with its bridge at %1:%2.</source>
        <translation>Starten Sie den Simulator mit seiner Bridge unter %1:%2.</translation>
    </message>
    <message>
        <source>Start the simulator with SimConnect.</source>
        <translation>Starten Sie den Simulator mit SimConnect.</translation>
    </message>
    <message>
        <source>Start the simulator with FSUIPC.</source>
        <translation>Starten Sie den Simulator mit FSUIPC.</translation>
    </message>
    <message>
        <source>Start the simulator with FSUIPC and SimConnect.</source>
        <translation>Starten Sie den Simulator mit FSUIPC und SimConnect.</translation>
    </message>
    <message>
        <source>Start the simulator.</source>
        <translation>Starten Sie den Simulator.</translation>
    </message>
</context>
<context>
    <name>TrayIcon</name>
    <message>
        <source>The program will keep running in the system tray.
Click icon to show Cirrilon</source>
        <translation>Das Programm läuft im Infobereich weiter.
Klicken Sie auf das Symbol, um Cirrilon zu zeigen</translation>
    </message>
    <message>
        <source>Show Cirrilon</source>
        <translation>Cirrilon zeigen</translation>
    </message>
</context>
<context>
    <name>UpperAirTable</name>
    <message>
        <source>Height
ft</source>
        <translation>Höhe
ft</translation>
    </message>
    <message>
        <source>Wind
°</source>
        <translation>Wind
°</translation>
    </message>
    <message>
        <source>Speed
kt</source>
        <translation>Stärke
kt</translation>
    </message>
    <message>
        <source>Temp.
°C</source>
        <translation>Temp.
°C</translation>
    </message>
    <message>
        <source>Dew p.
°C</source>
        <translation>Taup.
°C</translation>
    </message>
    <message>
        <source>Hum.
%</source>
        <translation>Feuchte
%</translation>
    </message>
    <message>
        <source>Press.
hPa</source>
        <translation>Druck
hPa</translation>
    </message>
    <message>
        <source>Upper air</source>
        <translation>Höhenwetter</translation>
    </message>
    <message>
        <source>Upper-air levels near the last report</source>
        <translation>Höhenschichten bei der letzten Meldung</translation>
    </message>
</context>
<context>
    <name>UpperAirWait</name>
    <message>
        <source>Waiting for upper-air data of %1. &quot;Leave out upper-air data&quot; in the settings ends the wait.</source>
        <translation>Warten auf Höhenwetterdaten von %1. „Höhenwetterdaten weglassen“ in den Einstellungen beendet das Warten.</translation>
    </message>
</context>
<context>
    <name>WeatherDownload</name>
    <message>
        <source>Weather downloaded</source>
        <translation>Wetter heruntergeladen</translation>
    </message>
    <message>
        <source>The external weather couldn&apos;t be fetched. Check its addresses in the settings.</source>
        <translation>Das externe Wetter konnte nicht geladen werden. Prüfen Sie seine Adressen in den Einstellungen.</translation>
    </message>
    <message>
        <source>Network error: %1 
%2</source>
        <translation>Netzwerkfehler: %1 
%2</translation>
    </message>
    <message>
        <source>Automatic weather download stopped.
Please contact the developers of Cirrilon.</source>
        <translation>Der automatische Wetter-Download wurde angehalten.
Bitte wenden Sie sich an die Entwickler von Cirrilon.</translation>
    </message>
    <message>
        <source>Cirrilon - Download error</source>
        <translation>Cirrilon – Download-Fehler</translation>
    </message>
    <message>
        <source>The weather list is damaged and can&apos;t be used.</source>
        <translation>Die Wetterliste ist beschädigt und kann nicht verwendet werden.</translation>
    </message>
    <message>
        <source>There are no reports in the external weather.</source>
        <translation>Im externen Wetter sind keine Meldungen.</translation>
    </message>
    <message>
        <source>Weather of %1Z, %2 old, kept from the last run</source>
        <translation>Wetter von %1Z, %2 alt, aus dem letzten Programmlauf</translation>
    </message>
    <message>
        <source>No source has enough METARs. Download stopped.</source>
        <translation>Keine Quelle hat genug METARs. Der Download wurde beendet.</translation>
    </message>
</context>
<context>
    <name>WidgetMetarUndock</name>
    <message>
        <source>Report</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>Decoded report</source>
        <translation>Entschlüsselte Meldung</translation>
    </message>
</context>
<context>
    <name>WidgetRadar</name>
    <message>
        <source>WeatherRadar</source>
        <translation>Wetterradar</translation>
    </message>
    <message>
        <source>Clouds around the aircraft</source>
        <translation>Wolken um das Flugzeug</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>Reichweite</translation>
    </message>
    <message>
        <source>From the aircraft to a corner of the picture, in NM</source>
        <translation>Vom Flugzeug bis zu einer Ecke des Bildes, in NM</translation>
    </message>
    <message>
        <source>Tilt</source>
        <translation>Neigung</translation>
    </message>
    <message>
        <source>Height of the air that is looked at above the aircraft, in feet; half as much below</source>
        <translation>Höhe der Luft, die über dem Flugzeug betrachtet wird, in Fuß; darunter halb so viel</translation>
    </message>
    <message>
        <source>Refresh every two seconds</source>
        <translation>Alle zwei Sekunden erneuern</translation>
    </message>
    <message>
        <source>request</source>
        <translation>Anfordern</translation>
    </message>
    <message>
        <source>Asks the simulator for the clouds once</source>
        <translation>Fragt den Simulator einmal nach den Wolken</translation>
    </message>
    <message>
        <source>This connection has no cloud map. SimConnect has one, alone or together with FSUIPC.</source>
        <translation>Diese Verbindung hat keine Wolkenkarte. SimConnect hat eine, allein oder zusammen mit FSUIPC.</translation>
    </message>
    <message>
        <source>The simulator gave no clouds: %1</source>
        <translation>Der Simulator gab keine Wolken: %1</translation>
    </message>
    <message>
        <source>Not connected. The clouds come from the simulator.</source>
        <translation>Nicht verbunden. Die Wolken kommen vom Simulator.</translation>
    </message>
    <message>
        <source>No picture yet. The button asks for one, the box above it for a new one every two seconds.</source>
        <translation>Noch kein Bild. Die Schaltfläche fordert eines an, das Kästchen darüber alle zwei Sekunden ein neues.</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Cirrilon is running already, but its window doesn&apos;t answer. End it before you start it anew.</source>
        <translation>Cirrilon läuft schon, aber sein Fenster antwortet nicht. Beenden Sie es, bevor Sie es neu starten.</translation>
    </message>
</context>
</TS>
