#error "The engine's headers include each other, whatever a project calls its own"
