// The page's own words, by language. "%s" and "%d" stand for names and numbers.
const TEXTS = {
  en: {
    start: "Start", pause: "Pause", play: "Play", restart: "Restart the clip",
    back: "One choice back", soundOff: "Turn the sound off", soundOn: "Turn the sound on",
    fullScreen: "Full screen", choices: "What can happen now", zone: "Click into the zone %s",
    key: "Press %s", chosen: "Chosen. It goes on when the clip ends.", paused: "Paused",
    ended: "The scene has ended.", noBranch: 'Stopped: "%s" is not in the scene.',
    noFirst: "Stopped: the scene has no first branch.",
    noTarget: "Stopped: the action has no target branch.", noVideo: "Stopped: no video.",
    unreadable: 'Stopped: the video "%s" cannot be played.', again: "Play again",
    path: "Path taken", copy: "Copy the path", copied: "Copied", started: "Started",
    byZone: 'Zone "%s" clicked', byKey: "Key %s pressed", byEnd: "Clip ended",
    byChance: "By chance, 1 of %d", immediate: ", immediate", atEnd: ", at the end of the clip",
    mute: "The browser plays without sound until you turn it on.",
  },
  fr: {
    start: "Commencer", pause: "Pause", play: "Lire", restart: "Relire la vidéo",
    back: "Revenir au choix précédent", soundOff: "Couper le son", soundOn: "Activer le son",
    fullScreen: "Plein écran", choices: "Ce qui est possible maintenant",
    zone: "Cliquer dans la zone %s", key: "Appuyer sur %s",
    chosen: "Choix retenu. La suite vient à la fin de la vidéo.", paused: "En pause",
    ended: "La scène est terminée.", noBranch: "Arrêt : « %s » n’est pas dans la scène.",
    noFirst: "Arrêt : la scène n’a pas de première branche.",
    noTarget: "Arrêt : l’action ne mène à aucune branche.", noVideo: "Arrêt : pas de vidéo.",
    unreadable: "Arrêt : la vidéo « %s » ne peut pas être lue.", again: "Rejouer",
    path: "Chemin suivi", copy: "Copier le chemin", copied: "Copié", started: "Début",
    byZone: "Clic dans la zone « %s »", byKey: "Touche %s", byEnd: "Fin de la vidéo",
    byChance: "Au hasard, 1 sur %d", immediate: ", immédiat", atEnd: ", à la fin de la vidéo",
    mute: "Le navigateur lit sans son jusqu’à ce que vous l’activiez.",
  },
  de: {
    start: "Starten", pause: "Pause", play: "Abspielen",
    restart: "Video neu starten", back: "Eine Wahl zurück", soundOff: "Ton ausschalten",
    soundOn: "Ton einschalten", fullScreen: "Vollbild", choices: "Was jetzt möglich ist",
    zone: "In die Zone %s klicken", key: "%s drücken",
    chosen: "Gewählt. Weiter geht es am Ende des Videos.", paused: "Angehalten",
    ended: "Die Szene ist zu Ende.", noBranch: "Gestoppt: „%s“ ist nicht in der Szene.",
    noFirst: "Gestoppt: Die Szene hat keinen Startzweig.",
    noTarget: "Gestoppt: Die Aktion hat keinen Zielzweig.", noVideo: "Gestoppt: kein Video.",
    unreadable: "Gestoppt: Das Video „%s“ lässt sich nicht abspielen.", again: "Noch einmal",
    path: "Gegangener Weg", copy: "Weg kopieren", copied: "Kopiert", started: "Beginn",
    byZone: "Zone „%s“ angeklickt", byKey: "Taste %s gedrückt", byEnd: "Video zu Ende",
    byChance: "Durch Zufall, 1 von %d", immediate: ", sofort", atEnd: ", am Ende des Videos",
    mute: "Der Browser spielt ohne Ton ab, bis Sie den Ton einschalten.",
  },
  es: {
    start: "Empezar", pause: "Pausa", play: "Reproducir",
    restart: "Repetir el vídeo", back: "Volver a la elección anterior", soundOff: "Quitar el sonido",
    soundOn: "Activar el sonido", fullScreen: "Pantalla completa",
    choices: "Qué puede pasar ahora", zone: "Hacer clic en la zona %s", key: "Pulsar %s",
    chosen: "Elegido. Continúa al final del vídeo.", paused: "En pausa",
    ended: "La escena ha terminado.", noBranch: "Detenido: «%s» no está en la escena.",
    noFirst: "Detenido: la escena no tiene primera rama.",
    noTarget: "Detenido: la acción no lleva a ninguna rama.", noVideo: "Detenido: no hay vídeo.",
    unreadable: "Detenido: no se puede reproducir el vídeo «%s».", again: "Otra vez",
    path: "Camino seguido", copy: "Copiar el camino", copied: "Copiado", started: "Inicio",
    byZone: "Clic en la zona «%s»", byKey: "Tecla %s", byEnd: "Fin del vídeo",
    byChance: "Al azar, 1 de %d", immediate: ", inmediato", atEnd: ", al final del vídeo",
    mute: "El navegador reproduce sin sonido hasta que lo active.",
  },
  nl: {
    start: "Beginnen", pause: "Pauze", play: "Afspelen",
    restart: "Video opnieuw", back: "Eén keuze terug", soundOff: "Geluid uitzetten",
    soundOn: "Geluid aanzetten", fullScreen: "Volledig scherm",
    choices: "Wat er nu kan gebeuren",
    zone: "In de zone %s klikken", key: "Op %s drukken",
    chosen: "Gekozen. Het gaat verder als de video eindigt.", paused: "Gepauzeerd",
    ended: "De scène is afgelopen.", noBranch: "Gestopt: “%s” komt niet voor in de scène.",
    noFirst: "Gestopt: de scène heeft geen eerste tak.",
    noTarget: "Gestopt: de actie heeft geen doeltak.", noVideo: "Gestopt: geen video.",
    unreadable: "Gestopt: de video “%s” kan niet worden afgespeeld.", again: "Nog een keer",
    path: "Gevolgde weg", copy: "Weg kopiëren", copied: "Gekopieerd", started: "Begin",
    byZone: "Zone “%s” aangeklikt", byKey: "Toets %s ingedrukt", byEnd: "Video afgelopen",
    byChance: "Bij toeval, 1 van %d", immediate: ", direct", atEnd: ", aan het eind van de video",
    mute: "De browser speelt zonder geluid tot u het aanzet.",
  },
};

// A name may itself hold "%s" or "$&": it goes in as it is.
const fill = (pattern, value) => pattern.replace(/%[sd]/, () => String(value));

function reasonText(texts, reason) {
  const when = reason.immediate ? texts.immediate : texts.atEnd;
  switch (reason.cause) {
    case "zone": return fill(texts.byZone, reason.name) + when;
    case "key": return fill(texts.byKey, reason.name) + when;
    case "end": return texts.byEnd;
    case "chance": return fill(texts.byChance, reason.choices);
    default: return texts.started;
  }
}

function endText(texts, player) {
  switch (player.state) {
    case "ended": return texts.ended;
    case "no video": return texts.noVideo;
    case "unreadable": return fill(texts.unreadable, player.branch.video);
    case "no branch": {
      const { name, reason } = player.path[player.path.length - 1];
      const none = reason.cause === "started" ? texts.noFirst : texts.noTarget;
      return name === "" ? none : fill(texts.noBranch, name);
    }
    default: return "";
  }
}

// m:ss.cc
function timeText(seconds) {
  const hundredths = Math.round(seconds * 100);
  const two = (number) => String(number).padStart(2, "0");
  return Math.floor(hundredths / 6000) + ":" + two(Math.floor(hundredths / 100) % 60) + "." + two(hundredths % 100);
}
