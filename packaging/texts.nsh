; What the installer says itself, in its five languages; the rest comes with its maker.
!macro text name english french german spanish dutch
  LangString ${name} ${LANG_ENGLISH} "${english}"
  LangString ${name} ${LANG_FRENCH} "${french}"
  LangString ${name} ${LANG_GERMAN} "${german}"
  LangString ${name} ${LANG_SPANISH} "${spanish}"
  LangString ${name} ${LANG_DUTCH} "${dutch}"
!macroend

!insertmacro text textRunning \
  "Quorvel is running. Please close it first." \
  "Quorvel est en cours d'exécution. Veuillez d'abord le fermer." \
  "Quorvel läuft noch. Bitte schließen Sie es zuerst." \
  "Quorvel se está ejecutando. Ciérrelo primero." \
  "Quorvel is nog actief. Sluit het eerst."
!insertmacro text textLater \
  "Version $0 of Quorvel is installed, which is later than this one (${VERSION}). Replace it all the same?" \
  "La version $0 de Quorvel est installée ; elle est plus récente que celle-ci (${VERSION}). La remplacer quand même ?" \
  "Installiert ist Quorvel $0, eine neuere Version als diese (${VERSION}). Trotzdem ersetzen?" \
  "Está instalada la versión $0 de Quorvel, más reciente que esta (${VERSION}). ¿Reemplazarla de todos modos?" \
  "Versie $0 van Quorvel is geïnstalleerd en is nieuwer dan deze (${VERSION}). Toch vervangen?"
!insertmacro text textNotInstalled \
  "Quorvel could not be installed: not every file can be written in$\n$INSTDIR$\n$\nNothing was changed there." \
  "Quorvel n'a pas pu être installé : certains fichiers ne peuvent pas être écrits dans$\n$INSTDIR$\n$\nRien n'y a été modifié." \
  "Quorvel konnte nicht installiert werden: Nicht jede Datei lässt sich schreiben in$\n$INSTDIR$\n$\nDort wurde nichts geändert." \
  "No se pudo instalar Quorvel: no se pueden escribir todos los archivos en$\n$INSTDIR$\n$\nNo se ha cambiado nada allí." \
  "Quorvel kon niet worden geïnstalleerd: niet elk bestand kan worden geschreven in$\n$INSTDIR$\n$\nDaar is niets gewijzigd."
!insertmacro text textNotUndone \
  "Quorvel could not be installed, and the former version could not be put back, because another program uses its files in$\n$INSTDIR$\n$\nClose other programs and start this installer again." \
  "Quorvel n'a pas pu être installé et la version précédente n'a pas pu être rétablie, car un autre programme utilise ses fichiers dans$\n$INSTDIR$\n$\nFermez les autres programmes et relancez cet installateur." \
  "Quorvel konnte nicht installiert und die vorige Version nicht wiederhergestellt werden, weil ein anderes Programm ihre Dateien verwendet in$\n$INSTDIR$\n$\nSchließen Sie andere Programme und starten Sie dieses Installationsprogramm noch einmal." \
  "No se pudo instalar Quorvel ni restablecer la versión anterior, porque otro programa usa sus archivos en$\n$INSTDIR$\n$\nCierre los demás programas y vuelva a iniciar este instalador." \
  "Quorvel kon niet worden geïnstalleerd en de vorige versie kon niet worden teruggezet, omdat een ander programma de bestanden gebruikt in$\n$INSTDIR$\n$\nSluit andere programma's en start dit installatieprogramma opnieuw."
!insertmacro text textNotRegistered \
  "Quorvel is installed, but its entries in the start menu or in the list of installed programs could not be made." \
  "Quorvel est installé, mais ses entrées dans le menu Démarrer ou dans la liste des programmes n'ont pas pu être créées." \
  "Quorvel ist installiert, aber seine Einträge im Startmenü oder in der Liste der Programme konnten nicht angelegt werden." \
  "Quorvel está instalado, pero no se pudieron crear sus entradas en el menú Inicio o en la lista de programas." \
  "Quorvel is geïnstalleerd, maar de vermeldingen in het startmenu of in de lijst met programma's konden niet worden gemaakt."
!insertmacro text textNotRemoved \
  "Some files of Quorvel could not be removed because another program uses them. Close other programs and uninstall Quorvel again." \
  "Certains fichiers de Quorvel n'ont pas pu être supprimés, car un autre programme les utilise. Fermez les autres programmes et recommencez la désinstallation." \
  "Einige Dateien von Quorvel konnten nicht entfernt werden, weil ein anderes Programm sie verwendet. Schließen Sie andere Programme und deinstallieren Sie Quorvel erneut." \
  "No se pudieron eliminar algunos archivos de Quorvel porque otro programa los usa. Cierre los demás programas y vuelva a desinstalar Quorvel." \
  "Sommige bestanden van Quorvel konden niet worden verwijderd omdat een ander programma ze gebruikt. Sluit andere programma's en verwijder Quorvel opnieuw."
!insertmacro text textScenesStay \
  "Your scenes, drafts, earlier versions and settings stay where they are, in Scenes and beside it:$\n$INSTDIR\Programs\Quorvel\Scenes" \
  "Vos scènes, brouillons, versions antérieures et réglages restent où ils sont, dans Scenes et à côté :$\n$INSTDIR\Programs\Quorvel\Scenes" \
  "Ihre Szenen, Entwürfe, früheren Versionen und Einstellungen bleiben, wo sie sind, in Scenes und daneben:$\n$INSTDIR\Programs\Quorvel\Scenes" \
  "Sus escenas, borradores, versiones anteriores y ajustes se quedan donde están, en Scenes y junto a esa carpeta:$\n$INSTDIR\Programs\Quorvel\Scenes" \
  "Uw scènes, concepten, eerdere versies en instellingen blijven waar ze zijn, in Scenes en ernaast:$\n$INSTDIR\Programs\Quorvel\Scenes"
!insertmacro text textManual \
  "Open the manual" "Ouvrir le manuel" "Handbuch öffnen" "Abrir el manual" "Handleiding openen"
