const picture = document.getElementById("keyboard");
const finding = document.getElementById("finding");

function show({ look, shown, finding: wrong }) {
  if (look !== "theme") return;
  picture.src = `picture.png?version=${shown}`;
  finding.textContent = wrong ? `${wrong.line ? `Line ${wrong.line}: ` : ""}${wrong.message}` : "";
}

const events = new EventSource("events");
events.addEventListener("version", (event) => show(JSON.parse(event.data)));
