// The chosen line: one of the table and of the picture.

export class Selection {
  constructor(scene) {
    this.scene = scene;
    this.table = null;
    this.place = null;
  }

  // Chooses the line at this place of the list, or none; flies there if told.
  choose(place, fly = false) {
    this.place = place;
    this.table?.mark(place);
    this.scene?.choose(place);
    if (fly && place !== null) this.scene?.flyTo(place);
  }
}
