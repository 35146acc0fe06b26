"use strict";

const METRES_PER_MILE = 1852;

function degreesAndMinutes(degrees, width, [positive, negative]) {
  const thousandths = Math.round(Math.abs(degrees) * 60000);
  const whole = String(Math.floor(thousandths / 60000)).padStart(width, "0");
  const minutes = ((thousandths % 60000) / 1000).toFixed(3).padStart(6, "0");
  return `${whole}°${minutes}′${degrees < 0 ? negative : positive}`;
}

function positionText(position) {
  const { lat, lng } = position.wrap();
  return `${degreesAndMinutes(lat, 2, "NS")} ${degreesAndMinutes(lng, 3, "EW")}`;
}

/** A panel whose element the caller fills. */
function panel(position, className) {
  const control = L.control({ position });
  control.onAdd = () => L.DomUtil.create("div", `panel ${className}`);
  return control;
}

/** The longest bar of 1, 2 or 5 times a power of ten nautical miles, up to 120 pixels. */
function updateScale(map, bar) {
  const y = map.getSize().y / 2;
  const metres = map.distance(map.containerPointToLatLng([0, y]), map.containerPointToLatLng([120, y]));
  const miles = metres / METRES_PER_MILE;
  const power = 10 ** Math.floor(Math.log10(miles));
  const length = [5, 2, 1].find((factor) => factor * power <= miles) * power;
  bar.style.width = `${(120 * length) / miles}px`;
  bar.textContent = `${Number(length.toPrecision(1))} NM`;
}

/** The view in the address: #zoom/latitude/longitude/scheme. */
function viewOfAddress() {
  const [zoom, latitude, longitude, scheme] = location.hash.slice(1).split("/");
  const numbers = [zoom, latitude, longitude].map(Number);
  return longitude && numbers.every(Number.isFinite) ? { numbers, scheme } : null;
}

class ChartMap {
  constructor(config) {
    this.config = config;
    this.scheme = "day";
    document.title = config.name;
    // Leaflet counts 512-pixel tiles one zoom lower.
    const zoomOffset = config.tile_size === 512 ? -1 : 0;
    this.map = L.map("map", { minZoom: config.zooms[0] - zoomOffset, maxZoom: config.zooms[1] + 3, worldCopyJump: true });
    this.map.attributionControl.setPrefix(false);  // a link to an address outside
    this.tiles = L.tileLayer("tiles/{scheme}/{z}/{x}/{y}", {
      scheme: "day",
      tileSize: config.tile_size,
      zoomOffset,
      maxNativeZoom: config.zooms[1] - zoomOffset,
      maxZoom: config.zooms[1] + 3,
      attribution: this.attribution(),
    }).addTo(this.map);
    this.addControls();
    this.restore();
    this.map.on("moveend", () => this.remember());
    window.addEventListener("hashchange", () => this.restore());
  }

  /** As text: the file may hold anything. */
  attribution() {
    const element = document.createElement("span");
    element.textContent = this.config.attribution;
    return element.innerHTML;
  }

  addControls() {
    const pointer = panel("bottomleft", "pointer").addTo(this.map).getContainer();
    pointer.textContent = "–";
    this.map.on("mousemove", (event) => { pointer.textContent = positionText(event.latlng); });

    const bar = L.DomUtil.create("div", "scale-bar", panel("bottomleft", "scale").addTo(this.map).getContainer());
    this.map.on("load move", () => updateScale(this.map, bar));

    const schemes = panel("topright", "schemes").addTo(this.map).getContainer();
    L.DomEvent.disableClickPropagation(schemes);
    for (const scheme of ["day", "dusk", "night"]) {
      const button = L.DomUtil.create("button", scheme, schemes);
      button.textContent = scheme;
      button.addEventListener("click", () => { this.show(scheme); this.remember(); });
    }
  }

  show(scheme) {
    this.scheme = scheme;
    document.body.classList.toggle("dark", scheme !== "day");
    for (const button of document.querySelectorAll(".schemes button")) {
      button.setAttribute("aria-pressed", button.className === scheme);
    }
    const own = this.config.schemes.includes(scheme);
    document.body.classList.toggle("dimmed", !own);
    if (own && this.tiles.options.scheme !== scheme) {
      this.tiles.options.scheme = scheme;
      this.tiles.redraw();
    }
  }

  remember() {
    const { lat, lng } = this.map.getCenter().wrap();
    this.hash = `#${this.map.getZoom()}/${lat.toFixed(6)}/${lng.toFixed(6)}/${this.scheme}`;
    history.replaceState(null, "", this.hash);
  }

  /** All charts if their map begins at a zoom that shows them all, or else the one in their middle. */
  showCharts() {
    const { bounds, centre } = this.config;
    const zoom = this.map.getMinZoom();
    if (this.map.getBoundsZoom(bounds) > zoom) this.map.fitBounds(bounds);
    else this.map.setView(centre, zoom);
  }

  restore() {
    if (location.hash && location.hash === this.hash) return;
    const view = viewOfAddress();
    if (view) {
      const [zoom, latitude, longitude] = view.numbers;
      this.map.setView([latitude, longitude], zoom);
      this.show(["dusk", "night"].includes(view.scheme) ? view.scheme : "day");
    } else {
      this.showCharts();
      this.show(this.scheme);
    }
  }
}

fetch("config.json")
  .then((answer) => answer.json())
  .then((config) => { window.chartMap = new ChartMap(config); });
